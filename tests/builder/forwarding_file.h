#pragma once

#include <memory>
#include <utility>

#include "page_file.h"

namespace ledgix::test {

// Does what another file does. Tests derive from it to watch or disturb some of the calls.
class ForwardingFile : public jet::PageFile {
public:
    explicit ForwardingFile(std::unique_ptr<jet::PageFile> file) : file_(std::move(file)) {}

    std::uint64_t size() const override { return file_->size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override { file_->Read(offset, into); }
    bool IsWritable() const override { return file_->IsWritable(); }
    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override { file_->Write(offset, bytes); }
    void Resize(std::uint64_t size) override { file_->Resize(size); }
    void Sync() override { file_->Sync(); }
    jet::FileStamp Stamp() const override { return file_->Stamp(); }
    void Touch(const jet::FileStamp& before) override { file_->Touch(before); }
    bool TryLock(std::uint64_t place, jet::LockKind kind) override { return file_->TryLock(place, kind); }

private:
    std::unique_ptr<jet::PageFile> file_;
};

}  // namespace ledgix::test
