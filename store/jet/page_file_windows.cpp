#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>
#include <map>

#include "page_file.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;

constexpr std::int64_t kNanosecondsOfTick = 100;  // file times count these

[[noreturn]] void RaiseDiskError(const std::string& action, const std::string& path, DWORD reason) {
    const bool full = reason == ERROR_DISK_FULL || reason == ERROR_HANDLE_DISK_FULL;
    runtime::RaiseEngineError(full ? ErrorNumber::kDiskFull : ErrorNumber::kDiskIo,
                              action + " the file '" + path + "' failed: system error " + std::to_string(reason) + ".");
}

[[noreturn]] void RaiseEndsEarly(const std::string& path) {
    runtime::RaiseEngineError(ErrorNumber::kDiskIo, "Reading the file '" + path + "' failed: it ends early.");
}

OVERLAPPED PlaceAt(std::uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

DWORD Portion(std::size_t size) {
    return static_cast<DWORD>(std::min<std::size_t>(size, 1U << 30));
}

class DiskFile : public PageFile {
public:
    DiskFile(HANDLE handle, std::string path, bool writable)
        : handle_(handle), path_(std::move(path)), writable_(writable) {}
    ~DiskFile() override { CloseHandle(handle_); }

    std::uint64_t size() const override {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(handle_, &size))
            RaiseDiskError("Reading", path_, GetLastError());
        return static_cast<std::uint64_t>(size.QuadPart);
    }

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        while (!into.empty()) {
            OVERLAPPED place = PlaceAt(offset);
            DWORD got = 0;
            if (!ReadFile(handle_, into.data(), Portion(into.size()), &got, &place) &&
                GetLastError() != ERROR_HANDLE_EOF)
                RaiseDiskError("Reading", path_, GetLastError());
            if (got == 0)
                RaiseEndsEarly(path_);
            into = into.subspan(got);
            offset += got;
        }
    }

    bool IsWritable() const override { return writable_; }

    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        while (!bytes.empty()) {
            OVERLAPPED place = PlaceAt(offset);
            DWORD put = 0;
            if (!WriteFile(handle_, bytes.data(), Portion(bytes.size()), &put, &place))
                RaiseDiskError("Writing", path_, GetLastError());
            bytes = bytes.subspan(put);
            offset += put;
        }
    }

    void Resize(std::uint64_t size) override {
        FILE_END_OF_FILE_INFO end{};
        end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
        if (!SetFileInformationByHandle(handle_, FileEndOfFileInfo, &end, sizeof end))
            RaiseDiskError("Writing", path_, GetLastError());
    }

    void Sync() override {
        if (!FlushFileBuffers(handle_))
            RaiseDiskError("Writing", path_, GetLastError());
    }

    FileStamp Stamp() const override {
        BY_HANDLE_FILE_INFORMATION information{};
        if (!GetFileInformationByHandle(handle_, &information))
            RaiseDiskError("Reading", path_, GetLastError());
        const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
        const FILETIME& time = information.ftLastWriteTime;
        return {
            .size = join(information.nFileSizeHigh, information.nFileSizeLow),
            .modified = static_cast<std::int64_t>(join(time.dwHighDateTime, time.dwLowDateTime)) * kNanosecondsOfTick,
            .identity = join(information.nFileIndexHigh, information.nFileIndexLow)};
    }

    void Touch(const FileStamp& before) override {
        constexpr std::int64_t kMostTicks = 40'000'000;  // four seconds
        for (std::int64_t step = 1; step <= kMostTicks && Stamp().modified <= before.modified; step *= 10) {
            const auto ticks = static_cast<std::uint64_t>(before.modified / kNanosecondsOfTick + step);
            const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
            if (!SetFileTime(handle_, nullptr, nullptr, &time))
                RaiseDiskError("Writing", path_, GetLastError());
        }
    }

    // The system does not turn a lock into another one: the old one goes first and comes back if the new one can't be
    // had.
    bool TryLock(std::uint64_t place, LockKind kind) override {
        const LockKind before = locks_[place];
        if (before == kind)
            return true;
        OVERLAPPED at = PlaceAt(place);
        if (before != LockKind::kNone)
            UnlockFileEx(handle_, 0, 1, 0, &at);
        const bool locked = kind == LockKind::kNone || Lock(place, kind);
        const bool kept = !locked && before != LockKind::kNone && Lock(place, before);
        locks_[place] = locked ? kind : kept ? before : LockKind::kNone;
        return locked;
    }

private:
    bool Lock(std::uint64_t place, LockKind kind) {
        OVERLAPPED at = PlaceAt(place);
        const DWORD flags =
            LOCKFILE_FAIL_IMMEDIATELY | (kind == LockKind::kExclusive ? LOCKFILE_EXCLUSIVE_LOCK : DWORD{0});
        if (LockFileEx(handle_, flags, 0, 1, 0, &at))
            return true;
        if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING)
            RaiseDiskError("Locking", path_, GetLastError());
        return false;
    }

    HANDLE handle_;
    std::string path_;
    bool writable_;
    std::map<std::uint64_t, LockKind> locks_;
};

[[noreturn]] void RaiseOpenError(const std::string& path, DWORD reason) {
    if (reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND || reason == ERROR_INVALID_NAME)
        runtime::RaiseEngineError(ErrorNumber::kDatabaseNotFound, "Could not find file '" + path + "'.");
    if (reason == ERROR_DISK_FULL)
        RaiseDiskError("Making", path, reason);
    runtime::RaiseEngineError(ErrorNumber::kCannotOpenFile,
                              "Could not open file '" + path + "': system error " + std::to_string(reason) + ".");
}

std::wstring WidePath(const std::string& path) {
    const std::u16string text = runtime::ToUtf16(path);
    return {text.begin(), text.end()};
}

class DiskFiles : public FileSystem {
public:
    std::unique_ptr<PageFile> Open(const std::string& path, OpenMode mode) override {
        return OpenWith(path, mode == OpenMode::kReadWrite, OPEN_EXISTING);
    }

    // The rights come from the folder.
    std::unique_ptr<PageFile> Create(const std::string& path, const std::string&) override {
        return OpenWith(path, true, CREATE_ALWAYS);
    }

    bool Exists(const std::string& path) override {
        return GetFileAttributesW(WidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    void Remove(const std::string& path) override {
        if (!DeleteFileW(WidePath(path).c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND)
            RaiseDiskError("Removing", path, GetLastError());
    }

    // The system writes folders before a flushed file counts as written.
    void SyncFolderOf(const std::string&) override {}

private:
    static std::unique_ptr<PageFile> OpenWith(const std::string& path, bool writable, DWORD creation) {
        const DWORD access = writable ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ;
        const DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const HANDLE handle =
            CreateFileW(WidePath(path).c_str(), access, sharing, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle == INVALID_HANDLE_VALUE)
            RaiseOpenError(path, GetLastError());
        return std::make_unique<DiskFile>(handle, path, writable);
    }
};

}  // namespace

FileSystem& DiskFileSystem() {
    static DiskFiles files;
    return files;
}

}  // namespace ledgix::jet
