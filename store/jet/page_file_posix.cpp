#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "page_file.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;

constexpr std::int64_t kNanoseconds = 1'000'000'000;

// The commands for locks that belong to the opened file instead of the process, where the system has them.
#ifdef F_OFD_SETLK
constexpr int kSetLock = F_OFD_SETLK;
#else
constexpr int kSetLock = F_SETLK;
#endif

[[noreturn]] void RaiseDiskError(const std::string& action, const std::string& path, int reason) {
    const bool full = reason == ENOSPC || reason == EDQUOT || reason == EFBIG;
    runtime::RaiseEngineError(full ? ErrorNumber::kDiskFull : ErrorNumber::kDiskIo,
                              action + " the file '" + path + "' failed: " + std::strerror(reason) + ".");
}

[[noreturn]] void RaiseEndsEarly(const std::string& path) {
    runtime::RaiseEngineError(ErrorNumber::kDiskIo, "Reading the file '" + path + "' failed: it ends early.");
}

// Repeats a call that a signal interrupted.
template <typename Call>
auto Repeat(Call call) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

timespec ModifiedTime(const struct stat& status) {
#ifdef __APPLE__
    return status.st_mtimespec;
#else
    return status.st_mtim;
#endif
}

void SyncDescriptor(int descriptor, const std::string& path) {
#ifdef __APPLE__
    const int result = fcntl(descriptor, F_FULLFSYNC);
#else
    const int result = Repeat([&] { return fdatasync(descriptor); });
#endif
    if (result < 0)
        RaiseDiskError("Writing", path, errno);
}

class DiskFile : public PageFile {
public:
    DiskFile(int descriptor, std::string path, bool writable)
        : descriptor_(descriptor), path_(std::move(path)), writable_(writable) {}
    ~DiskFile() override { close(descriptor_); }

    std::uint64_t size() const override { return static_cast<std::uint64_t>(Status().st_size); }

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        while (!into.empty()) {
            const ssize_t got =
                Repeat([&] { return pread(descriptor_, into.data(), into.size(), static_cast<off_t>(offset)); });
            if (got < 0)
                RaiseDiskError("Reading", path_, errno);
            if (got == 0)
                RaiseEndsEarly(path_);
            into = into.subspan(static_cast<std::size_t>(got));
            offset += static_cast<std::uint64_t>(got);
        }
    }

    bool IsWritable() const override { return writable_; }

    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        while (!bytes.empty()) {
            const ssize_t put =
                Repeat([&] { return pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
            if (put < 0)
                RaiseDiskError("Writing", path_, errno);
            bytes = bytes.subspan(static_cast<std::size_t>(put));
            offset += static_cast<std::uint64_t>(put);
        }
    }

    void Resize(std::uint64_t size) override {
        if (Repeat([&] { return ftruncate(descriptor_, static_cast<off_t>(size)); }) < 0)
            RaiseDiskError("Writing", path_, errno);
    }

    void Sync() override { SyncDescriptor(descriptor_, path_); }

    FileStamp Stamp() const override {
        const struct stat status = Status();
        const timespec time = ModifiedTime(status);
        return {.size = static_cast<std::uint64_t>(status.st_size),
                .modified = static_cast<std::int64_t>(time.tv_sec) * kNanoseconds + time.tv_nsec,
                .identity = static_cast<std::uint64_t>(status.st_ino)};
    }

    // Steps grow until the file system keeps the difference.
    void Touch(const FileStamp& before) override {
        for (std::int64_t step = 1; step <= 4 * kNanoseconds && Stamp().modified <= before.modified; step *= 10)
            SetModified(before.modified + step);
    }

    bool TryLock(std::uint64_t place, LockKind kind) override {
        struct flock lock {};
        lock.l_type = static_cast<short>(kind == LockKind::kNone     ? F_UNLCK
                                         : kind == LockKind::kShared ? F_RDLCK
                                                                     : F_WRLCK);
        lock.l_whence = SEEK_SET;
        lock.l_start = static_cast<off_t>(place);
        lock.l_len = 1;
        if (Repeat([&] { return fcntl(descriptor_, kSetLock, &lock); }) == 0)
            return true;
        if (errno == EACCES || errno == EAGAIN)
            return false;
        RaiseDiskError("Locking", path_, errno);
    }

private:
    struct stat Status() const {
        struct stat status {};
        if (fstat(descriptor_, &status) != 0)
            RaiseDiskError("Reading", path_, errno);
        return status;
    }

    void SetModified(std::int64_t nanoseconds) {
        timespec times[2]{};
        times[0].tv_nsec = UTIME_OMIT;
        times[1].tv_sec = static_cast<time_t>(nanoseconds / kNanoseconds);
        times[1].tv_nsec = static_cast<long>(nanoseconds % kNanoseconds);
        if (futimens(descriptor_, times) != 0)
            RaiseDiskError("Writing", path_, errno);
    }

    int descriptor_;
    std::string path_;
    bool writable_;
};

[[noreturn]] void RaiseOpenError(const std::string& path, int reason) {
    if (reason == ENOENT || reason == ENOTDIR)
        runtime::RaiseEngineError(ErrorNumber::kDatabaseNotFound, "Could not find file '" + path + "'.");
    if (reason == ENOSPC || reason == EDQUOT)
        RaiseDiskError("Making", path, reason);
    runtime::RaiseEngineError(ErrorNumber::kCannotOpenFile,
                              "Could not open file '" + path + "': " + std::strerror(reason) + ".");
}

class DiskFiles : public FileSystem {
public:
    std::unique_ptr<PageFile> Open(const std::string& path, OpenMode mode) override {
        const bool writable = mode == OpenMode::kReadWrite;
        return OpenWith(path, writable ? O_RDWR : O_RDONLY, writable);
    }

    std::unique_ptr<PageFile> Create(const std::string& path, const std::string& like) override {
        auto file = OpenWith(path, O_RDWR | O_CREAT | O_TRUNC, true);
        struct stat status {};
        if (stat(like.c_str(), &status) == 0)
            chmod(path.c_str(), status.st_mode & kPermissions);
        return file;
    }

    bool Exists(const std::string& path) override { return access(path.c_str(), F_OK) == 0; }

    void Remove(const std::string& path) override {
        if (unlink(path.c_str()) != 0 && errno != ENOENT)
            RaiseDiskError("Removing", path, errno);
    }

    void SyncFolderOf(const std::string& path) override {
        std::string folder = std::filesystem::path(path).parent_path().string();
        if (folder.empty())
            folder = ".";
        const int descriptor = open(folder.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY);
        if (descriptor < 0)
            RaiseDiskError("Opening the folder of", path, errno);
        const int result = Repeat([&] { return fsync(descriptor); });
        const int reason = errno;
        close(descriptor);
        // Some file systems keep no folders apart that could be waited for.
        if (result < 0 && reason != EINVAL)
            RaiseDiskError("Writing the folder of", path, reason);
    }

private:
    static constexpr mode_t kPermissions = 0777;
    static constexpr mode_t kOwnerOnly = 0600;

    static std::unique_ptr<PageFile> OpenWith(const std::string& path, int flags, bool writable) {
        // Without O_NONBLOCK the opening of a pipe would wait for a writer.
        const int descriptor = Repeat([&] { return open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, kOwnerOnly); });
        if (descriptor < 0)
            RaiseOpenError(path, errno);
        auto file = std::make_unique<DiskFile>(descriptor, path, writable);
        struct stat status {};
        if (fstat(descriptor, &status) == 0 && !S_ISREG(status.st_mode))
            RaiseOpenError(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
        return file;
    }
};

}  // namespace

FileSystem& DiskFileSystem() {
    static DiskFiles files;
    return files;
}

}  // namespace ledgix::jet
