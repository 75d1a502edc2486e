#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>

#include "page_file.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;

[[noreturn]] void RaiseReadError(const std::string& path, const std::string& reason) {
    runtime::RaiseEngineError(ErrorNumber::kDiskIo, "Reading the file '" + path + "' failed: " + reason + ".");
}

std::string SystemError(DWORD reason) {
    return "system error " + std::to_string(reason);
}

class DiskFile : public PageFile {
public:
    DiskFile(HANDLE handle, std::string path) : handle_(handle), path_(std::move(path)) {}
    ~DiskFile() override { CloseHandle(handle_); }

    std::uint64_t size() const override {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(handle_, &size))
            RaiseReadError(path_, SystemError(GetLastError()));
        return static_cast<std::uint64_t>(size.QuadPart);
    }

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        while (!into.empty()) {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(offset);
            place.OffsetHigh = static_cast<DWORD>(offset >> 32);
            const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(into.size(), 1U << 30));
            DWORD got = 0;
            if (!ReadFile(handle_, into.data(), wanted, &got, &place) && GetLastError() != ERROR_HANDLE_EOF)
                RaiseReadError(path_, SystemError(GetLastError()));
            if (got == 0)
                RaiseReadError(path_, "it ends early");
            into = into.subspan(got);
            offset += got;
        }
    }

private:
    HANDLE handle_;
    std::string path_;
};

[[noreturn]] void RaiseOpenError(const std::string& path, DWORD reason) {
    if (reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND || reason == ERROR_INVALID_NAME)
        runtime::RaiseEngineError(ErrorNumber::kDatabaseNotFound, "Could not find file '" + path + "'.");
    runtime::RaiseEngineError(ErrorNumber::kCannotOpenFile,
                              "Could not open file '" + path + "': " + SystemError(reason) + ".");
}

std::wstring WidePath(const std::string& path) {
    const std::u16string text = runtime::ToUtf16(path);
    return {text.begin(), text.end()};
}

}  // namespace

std::unique_ptr<PageFile> OpenPageFile(const std::string& path) {
    const HANDLE handle = CreateFileW(WidePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        RaiseOpenError(path, GetLastError());
    return std::make_unique<DiskFile>(handle, path);
}

}  // namespace ledgix::jet
