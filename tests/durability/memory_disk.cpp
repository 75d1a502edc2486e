#include "memory_disk.h"

#include <algorithm>
#include <set>

#include "runtime_error.h"

namespace ledgix::test {

namespace {

constexpr std::size_t kSector = 512;

}  // namespace

class MemoryDisk::File : public jet::PageFile {
public:
    File(MemoryDisk& disk, std::shared_ptr<Content> content, bool writable)
        : disk_(disk), content_(std::move(content)), writable_(writable) {}

    std::uint64_t size() const override { return content_->now.size(); }
    void Read(std::uint64_t offset, std::span<std::uint8_t> into) override {
        if (offset + into.size() > content_->now.size())
            runtime::RaiseEngineError(runtime::ErrorNumber::kDiskIo, "Reading past the end.");
        std::copy_n(content_->now.begin() + static_cast<std::ptrdiff_t>(offset), into.size(), into.begin());
    }
    bool IsWritable() const override { return writable_; }
    void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        disk_.Count();
        Do({.offset = offset, .bytes = {bytes.begin(), bytes.end()}});
    }
    void Resize(std::uint64_t size) override {
        disk_.Count();
        Do({.cuts = true, .offset = size, .bytes = {}});
    }
    void Sync() override {
        disk_.Count();
        content_->safe = content_->now;
        content_->pending.clear();
    }
    jet::FileStamp Stamp() const override { return {.size = content_->now.size(), .modified = content_->modified}; }
    void Touch(const jet::FileStamp&) override { ++content_->modified; }
    bool TryLock(std::uint64_t, jet::LockKind) override { return true; }

private:
    void Do(Change change) {
        Apply(change, content_->now);
        content_->pending.push_back(std::move(change));
    }

    MemoryDisk& disk_;
    std::shared_ptr<Content> content_;
    bool writable_;
};

void MemoryDisk::Put(const std::string& path, std::vector<std::uint8_t> content) {
    auto file = std::make_shared<Content>();
    file->safe = content;
    file->now = std::move(content);
    names_[path] = safe_names_[path] = file;
}

void MemoryDisk::StopAt(std::size_t operation) {
    operations_ = 0;
    stop_at_ = operation;
}

void MemoryDisk::Count() {
    ++operations_;
    if (stop_at_ != 0 && operations_ >= stop_at_)
        runtime::RaiseEngineError(runtime::ErrorNumber::kDiskIo, "The power is gone.");
}

void MemoryDisk::Apply(const Change& change, std::vector<std::uint8_t>& content) {
    if (change.cuts) {
        content.resize(change.offset);
        return;
    }
    content.resize(std::max<std::size_t>(content.size(), change.offset + change.bytes.size()));
    std::copy(change.bytes.begin(), change.bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(change.offset));
}

// Sectors arrive or do not, each by itself.
void MemoryDisk::ApplySome(const Change& change, std::vector<std::uint8_t>& content, std::mt19937& random) {
    if (random() % 3 == 0)
        return;
    if (change.cuts || random() % 2 == 0) {
        Apply(change, content);
        return;
    }
    for (std::size_t start = 0; start < change.bytes.size(); start += kSector) {
        if (random() % 2 == 0)
            continue;
        const std::size_t size = std::min(kSector, change.bytes.size() - start);
        const auto first = change.bytes.begin() + static_cast<std::ptrdiff_t>(start);
        Apply({.offset = change.offset + start, .bytes = {first, first + static_cast<std::ptrdiff_t>(size)}}, content);
    }
}

void MemoryDisk::LosePower(std::mt19937& random) {
    stop_at_ = 0;
    std::set<std::string> all;
    for (const Names* names : {&names_, &safe_names_}) {
        for (const auto& [name, content] : *names)
            all.insert(name);
    }
    for (const std::string& name : all) {
        const auto now = names_.find(name);
        const auto safe = safe_names_.find(name);
        const bool changed = now == names_.end() || safe == safe_names_.end() || now->second != safe->second;
        if (changed && random() % 2 == 0) {
            if (safe == safe_names_.end())
                names_.erase(name);
            else
                names_[name] = safe->second;
        }
    }
    std::set<Content*> contents;
    for (const auto& [name, content] : names_)
        contents.insert(content.get());
    for (Content* content : contents) {
        for (const Change& change : content->pending)
            ApplySome(change, content->safe, random);
        content->pending.clear();
        content->now = content->safe;
    }
    safe_names_ = names_;
}

std::unique_ptr<jet::PageFile> MemoryDisk::Open(const std::string& path, jet::OpenMode mode) {
    const auto found = names_.find(path);
    if (found == names_.end())
        runtime::RaiseEngineError(runtime::ErrorNumber::kDatabaseNotFound, "Could not find file '" + path + "'.");
    return std::make_unique<File>(*this, found->second, mode == jet::OpenMode::kReadWrite);
}

std::unique_ptr<jet::PageFile> MemoryDisk::Create(const std::string& path, const std::string&) {
    Count();
    const auto content = std::make_shared<Content>();
    names_[path] = content;
    return std::make_unique<File>(*this, content, true);
}

void MemoryDisk::Remove(const std::string& path) {
    Count();
    names_.erase(path);
}

void MemoryDisk::SyncFolderOf(const std::string&) {
    Count();
    safe_names_ = names_;
}

}  // namespace ledgix::test
