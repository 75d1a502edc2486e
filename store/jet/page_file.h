#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ledgix::jet {

// What tells one state of a file from another: every change that this program makes leaves a stamp that the file never
// had before (see PageFile::Touch).
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // in nanoseconds
    std::uint64_t identity = 0;
    bool operator==(const FileStamp&) const = default;
};

enum class LockKind { kNone, kShared, kExclusive };

// The bytes of a file, by offset, and locks that other openers of the file see, in this process or another one. One
// thread. Errors of every call: 3043 when the system fails, 3026 when there is no space.
class PageFile {
public:
    PageFile() = default;
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;
    virtual ~PageFile() = default;

    // Length in bytes at this moment; another process may change it.
    virtual std::uint64_t size() const = 0;

    // Fills all of `into`. Error 3043 when the bytes are not there.
    virtual void Read(std::uint64_t offset, std::span<std::uint8_t> into) = 0;

    virtual bool IsWritable() const = 0;
    // Makes the file longer when it ends before.
    virtual void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;
    virtual void Resize(std::uint64_t size) = 0;
    // Returns when all that was written will outlast a loss of power.
    virtual void Sync() = 0;

    virtual FileStamp Stamp() const = 0;
    // Gives the file a stamp that differs from `before`, whatever the grain of the system's clock.
    virtual void Touch(const FileStamp& before) = 0;

    // Turns the lock that this opener has on a place into another one; kNone gives it up. Places are numbers that mean
    // nothing to the file's content. False when another opener's lock is in the way. A shared lock needs no right to
    // write, an exclusive one does.
    virtual bool TryLock(std::uint64_t place, LockKind kind) = 0;
};

enum class OpenMode { kRead, kReadWrite };

// Where files are. A test may put one in between that fails on purpose.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    // Errors: 3024 when there is no such file, 3051 when it cannot be opened, is no regular file, or the right is
    // missing.
    virtual std::unique_ptr<PageFile> Open(const std::string& path, OpenMode mode) = 0;
    // Makes an empty file, or empties the one that is there; who may read and write `like` may do so with it.
    virtual std::unique_ptr<PageFile> Create(const std::string& path, const std::string& like) = 0;
    virtual bool Exists(const std::string& path) = 0;
    // No error when there is none.
    virtual void Remove(const std::string& path) = 0;
    // Returns when the making or removing of files beside `path` will outlast a loss of power.
    virtual void SyncFolderOf(const std::string& path) = 0;
};

FileSystem& DiskFileSystem();

// Opens a file for reading; the right to write is not needed. Errors as of FileSystem::Open.
std::unique_ptr<PageFile> OpenPageFile(const std::string& path);

// A file that exists in memory only. Nobody else has it open.
std::unique_ptr<PageFile> MakeMemoryFile(std::vector<std::uint8_t> content);

}  // namespace ledgix::jet
