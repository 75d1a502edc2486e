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

private:
    std::vector<std::uint8_t> content_;
};

}  // namespace

std::unique_ptr<PageFile> MakeMemoryFile(std::vector<std::uint8_t> content) {
    return std::make_unique<MemoryFile>(std::move(content));
}

}  // namespace ledgix::jet
