#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace ledgix::runtime {

// The library's form of a path in UTF-8.
std::filesystem::path ToPath(const std::string& path);

// The same path in UTF-8.
std::string PathText(const std::filesystem::path& path);

// The path of an existing file: the path itself, or one whose last part differs in case only. Empty if there is none.
std::optional<std::string> FindFile(const std::string& path);

// The whole content. Errors: 53 when there is no such file, 57 when it cannot be read.
std::string ReadFile(const std::string& path);

// Replaces the file by `content`: written beside it first and renamed, so that a failure leaves the old file or none.
// The new file has the old one's permissions; a link goes on pointing at its file.
// Error 57 when it cannot be written.
void WriteFile(const std::string& path, std::string_view content);

// Adds `content` at the end of the file, which is made if it is missing. Error 57 when it cannot be written.
void AppendFile(const std::string& path, std::string_view content);

}  // namespace ledgix::runtime
