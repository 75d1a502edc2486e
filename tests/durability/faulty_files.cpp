#include "faulty_files.h"

#include "forwarding_file.h"
#include "runtime_error.h"

namespace ledgix::test {

namespace {

[[noreturn]] void RaiseFault() {
    runtime::RaiseEngineError(runtime::ErrorNumber::kDiskIo, "This fault is on purpose.");
}

}  // namespace

// Counts an operation; true when it is to fail.
bool FaultyFiles::State::FailsNow() {
    ++operations;
    const bool reached = fail_at != 0 && (fault == Fault::kOnce ? operations == fail_at : operations >= fail_at);
    failed = failed || reached;
    return reached;
}

void FaultyFiles::State::Count() {
    if (FailsNow() && fault != Fault::kFull)
        RaiseFault();
}

class FaultyFiles::File : public ForwardingFile {
public:
    File(std::unique_ptr<jet::PageFile> file, std::shared_ptr<State> state)
        : ForwardingFile(std::move(file)), state_(std::move(state)) {}

    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        const bool first = state_->operations + 1 == state_->fail_at;
        if (state_->FailsNow())
            Fail(offset, bytes, first);
        else
            ForwardingFile::Write(offset, bytes);
    }
    void Resize(std::uint64_t size) override {
        state_->Count();
        ForwardingFile::Resize(size);
    }
    void Sync() override {
        state_->Count();
        ForwardingFile::Sync();
    }
    void Touch(const jet::FileStamp& before) override {
        state_->Count();
        ForwardingFile::Touch(before);
    }

private:
    void Fail(std::uint64_t offset, std::span<const std::uint8_t> bytes, bool first) {
        if (state_->fault == Fault::kFull) {
            if (offset + bytes.size() > size())
                runtime::RaiseEngineError(runtime::ErrorNumber::kDiskFull, "No room, on purpose.");
            ForwardingFile::Write(offset, bytes);
            return;
        }
        if (state_->fault == Fault::kTorn && first)
            ForwardingFile::Write(offset, bytes.first(bytes.size() / 2));
        RaiseFault();
    }

    std::shared_ptr<State> state_;
};

void FaultyFiles::FailAt(std::size_t operation, Fault fault) {
    *state_ = {.fail_at = operation, .fault = fault};
}

std::unique_ptr<jet::PageFile> FaultyFiles::Open(const std::string& path, jet::OpenMode mode) {
    state_->Count();
    return std::make_unique<File>(jet::DiskFileSystem().Open(path, mode), state_);
}

std::unique_ptr<jet::PageFile> FaultyFiles::Create(const std::string& path, const std::string& like) {
    state_->Count();
    return std::make_unique<File>(jet::DiskFileSystem().Create(path, like), state_);
}

void FaultyFiles::Remove(const std::string& path) {
    state_->Count();
    jet::DiskFileSystem().Remove(path);
}

void FaultyFiles::SyncFolderOf(const std::string& path) {
    state_->Count();
    jet::DiskFileSystem().SyncFolderOf(path);
}

}  // namespace ledgix::test
