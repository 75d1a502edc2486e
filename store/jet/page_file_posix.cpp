#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "page_file.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;

[[noreturn]] void RaiseReadError(const std::string& path, const std::string& reason) {
    runtime::RaiseEngineError(ErrorNumber::kDiskIo, "Reading the file '" + path + "' failed: " + reason + ".");
}

class DiskFile : public PageFile {
public:
    DiskFile(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {}
    ~DiskFile() override { close(descriptor_); }

    std::uint64_t size() const override {
        struct stat status {};
        if (fstat(descriptor_, &status) != 0)
            RaiseReadError(path_, std::strerror(errno));
        return static_cast<std::uint64_t>(status.st_size);
    }

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        while (!into.empty()) {
            const ssize_t got = pread(descriptor_, into.data(), into.size(), static_cast<off_t>(offset));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                RaiseReadError(path_, got < 0 ? std::strerror(errno) : "it ends early");
            into = into.subspan(static_cast<std::size_t>(got));
            offset += static_cast<std::uint64_t>(got);
        }
    }

private:
    int descriptor_;
    std::string path_;
};

[[noreturn]] void RaiseOpenError(const std::string& path, int reason) {
    if (reason == ENOENT || reason == ENOTDIR)
        runtime::RaiseEngineError(ErrorNumber::kDatabaseNotFound, "Could not find file '" + path + "'.");
    runtime::RaiseEngineError(ErrorNumber::kCannotOpenFile,
                              "Could not open file '" + path + "': " + std::strerror(reason) + ".");
}

}  // namespace

std::unique_ptr<PageFile> OpenPageFile(const std::string& path) {
    // Without O_NONBLOCK the opening of a pipe would wait for a writer.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        RaiseOpenError(path, errno);
    auto file = std::make_unique<DiskFile>(descriptor, path);
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && !S_ISREG(status.st_mode))
        RaiseOpenError(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    return file;
}

}  // namespace ledgix::jet
