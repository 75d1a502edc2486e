#include "page_file.h"

#include <algorithm>
#include <utility>

#include "runtime_error.h"

namespace ledgix::jet {

namespace {

class MemoryFile : public PageFile {
public:
    explicit MemoryFile(std::vector<std::uint8_t> content) : content_(std::move(content)) {}

    std::uint64_t size() const override { return content_.size(); }

    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        if (offset > content_.size() || into.size() > content_.size() - offset)
            runtime::RaiseEngineError(runtime::ErrorNumber::kDiskIo, "Reading past the end of the file.");
        std::copy_n(content_.begin() + static_cast<std::ptrdiff_t>(offset), into.size(), into.begin());
    }

    bool IsWritable() const override { return true; }

    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        content_.resize(std::max<std::size_t>(content_.size(), offset + bytes.size()));
        std::copy(bytes.begin(), bytes.end(), content_.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    void Resize(std::uint64_t size) override { content_.resize(size); }
    void Sync() override {}
    FileStamp Stamp() const override { return {.size = content_.size(), .modified = modified_}; }
    void Touch(const FileStamp&) override { ++modified_; }
    bool TryLock(std::uint64_t, LockKind) override { return true; }

private:
    std::vector<std::uint8_t> content_;
    std::int64_t modified_ = 0;
};

}  // namespace

std::unique_ptr<PageFile> MakeMemoryFile(std::vector<std::uint8_t> content) {
    return std::make_unique<MemoryFile>(std::move(content));
}

std::unique_ptr<PageFile> OpenPageFile(const std::string& path) {
    return DiskFileSystem().Open(path, OpenMode::kRead);
}

}  // namespace ledgix::jet
