#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ledgix::jet {

// The bytes of a database file, by offset. One thread.
class PageFile {
public:
    PageFile() = default;
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;
    virtual ~PageFile() = default;

    // Length in bytes at this moment; another process may change it.
    virtual std::uint64_t size() const = 0;

    // Fills all of `into`. Error 3043 when the bytes are not there or cannot be read.
    virtual void Read(std::uint64_t offset, std::span<std::uint8_t> into) = 0;
};

// Opens a file for reading; the right to write is not needed. Errors: 3024 when there is no such file, 3051 when it
// cannot be opened or is no regular file.
std::unique_ptr<PageFile> OpenPageFile(const std::string& path);

// A file that exists in memory only.
std::unique_ptr<PageFile> MakeMemoryFile(std::vector<std::uint8_t> content);

}  // namespace ledgix::jet
