#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace ledgix::test {

// A new, empty folder with a blank in its name. It goes with all that is in it when the object does.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // UTF-8, without a separator at the end.
    std::string path() const;
    // The path of a file in the folder, there or not.
    std::string File(const std::string& name) const;
    // Makes a file and gives its path.
    std::string Write(const std::string& name, std::string_view content) const;
    // Makes a folder in the folder and gives its path.
    std::string MakeFolder(const std::string& name) const;
    // Names of all that is in the folder, sorted and joined by blanks.
    std::string List() const;

private:
    std::filesystem::path path_;
};

// The content of a file; empty when there is none.
std::string Content(const std::string& path);

}  // namespace ledgix::test
