#include "rollback_journal.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "byte_order.h"
#include "files.h"
#include "resume_next.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

constexpr std::uint8_t kMark[8]{'L', 'G', 'X', 'J', 'R', 'N', 'L', '1'};
constexpr std::size_t kPageSizeAt = 8;
constexpr std::size_t kPageCountAt = 12;
constexpr std::size_t kChangedCountAt = 16;
constexpr std::size_t kKeptCountAt = 20;
constexpr std::size_t kChecksumAt = 24;
constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kEntrySize = 12;
constexpr std::size_t kEntryChecksumAt = 4;

std::string RealPath(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::path real = std::filesystem::canonical(runtime::ToPath(path), ignored);
    return ignored ? path : runtime::PathText(real);
}

// FNV-1a over eight bytes at a time.
std::uint64_t Mix(std::uint64_t sum, Bytes bytes) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8) {
        sum = (sum ^ LoadU64(bytes, at)) * kPrime;
        sum ^= sum >> 32;
    }
    for (; at < bytes.size(); ++at)
        sum = (sum ^ bytes[at]) * kPrime;
    return sum;
}

constexpr std::uint64_t kChecksumStart = 0xCBF29CE484222325;

std::uint64_t ChecksumOf(Bytes journal) {
    return Mix(Mix(kChecksumStart, journal.first(kChecksumAt)), journal.subspan(kHeaderSize));
}

// A complete journal, taken apart.
class KeptState {
public:
    explicit KeptState(Bytes journal) : journal_(journal) {
        if (journal.size() < kHeaderSize || !std::equal(std::begin(kMark), std::end(kMark), journal.begin()))
            return;
        page_size_ = LoadU32(journal, kPageSizeAt);
        page_count_ = LoadU32(journal, kPageCountAt);
        changed_count_ = LoadU32(journal, kChangedCountAt);
        kept_count_ = LoadU32(journal, kKeptCountAt);
        complete_ = journal.size() == kHeaderSize + changed_count_ * kEntrySize + kept_count_ * page_size_ &&
                    kept_count_ <= changed_count_ && page_size_ != 0 &&
                    LoadU64(journal, kChecksumAt) == ChecksumOf(journal);
    }

    bool IsComplete() const { return complete_; }

    // Whether the database has the new content of every page.
    bool IsIn(PageFile& database) const {
        const std::uint64_t size = database.size();
        ByteList page(page_size_);
        for (std::size_t i = 0; i < changed_count_; ++i) {
            const std::uint64_t offset = std::uint64_t{NumberAt(i)} * page_size_;
            if (offset + page_size_ > size)
                return false;
            database.Read(offset, page);
            if (LoadU64(journal_, EntryAt(i) + kEntryChecksumAt) != Mix(kChecksumStart, page))
                return false;
        }
        return true;
    }

    void WriteTo(PageFile& database) const {
        for (std::size_t i = 0; i < kept_count_; ++i) {
            const std::size_t at = kHeaderSize + changed_count_ * kEntrySize + i * page_size_;
            database.Write(std::uint64_t{NumberAt(i)} * page_size_, journal_.subspan(at, page_size_));
        }
        database.Resize(std::uint64_t{page_count_} * page_size_);
    }

private:
    static std::size_t EntryAt(std::size_t i) { return kHeaderSize + i * kEntrySize; }
    PageNumber NumberAt(std::size_t i) const { return LoadU32(journal_, EntryAt(i)); }

    Bytes journal_;
    std::size_t page_size_ = 0;
    PageNumber page_count_ = 0;
    std::size_t changed_count_ = 0;
    std::size_t kept_count_ = 0;
    bool complete_ = false;
};

// The pages ascend, so those kept stand before the new ones.
ByteList MakeJournal(PageFile& database, PageNumber page_count, const std::vector<PagePtr>& pages) {
    const std::size_t page_size = pages.front()->bytes.size();
    const auto is_old = [&](const PagePtr& page) { return page->number < page_count; };
    const auto kept = static_cast<std::size_t>(std::count_if(pages.begin(), pages.end(), is_old));
    ByteList journal(kHeaderSize + pages.size() * kEntrySize + kept * page_size);
    std::copy(std::begin(kMark), std::end(kMark), journal.begin());
    StoreLittle(journal, kPageSizeAt, static_cast<std::uint32_t>(page_size));
    StoreLittle(journal, kPageCountAt, page_count);
    StoreLittle(journal, kChangedCountAt, static_cast<std::uint32_t>(pages.size()));
    StoreLittle(journal, kKeptCountAt, static_cast<std::uint32_t>(kept));
    std::size_t at = kHeaderSize;
    for (const PagePtr& page : pages) {
        StoreLittle(journal, at, page->number);
        StoreLittle(journal, at + kEntryChecksumAt, Mix(kChecksumStart, page->bytes));
        at += kEntrySize;
    }
    for (std::size_t i = 0; i < kept; ++i, at += page_size)
        database.Read(std::uint64_t{pages[i]->number} * page_size, std::span(journal).subspan(at, page_size));
    StoreLittle(journal, kChecksumAt, ChecksumOf(journal));
    return journal;
}

}  // namespace

RollbackJournal::RollbackJournal(FileSystem& files, const std::string& database_path)
    : files_(files), database_path_(RealPath(database_path)), path_(database_path_ + ".journal") {}

void RollbackJournal::Write(PageFile& database, PageNumber page_count_before, const std::vector<PagePtr>& pages) {
    const ByteList content = MakeJournal(database, page_count_before, pages);
    try {
        const std::unique_ptr<PageFile> journal = files_.Create(path_, database_path_);
        journal->Write(0, content);
        journal->Sync();
        files_.SyncFolderOf(path_);
    } catch (...) {
        Discard();
        throw;
    }
}

// A journal that stays where it is does no harm: it is not complete, or its change is, or nothing has changed.
void RollbackJournal::Discard() {
    runtime::ResumeNext([this] { files_.Remove(path_); }, [](const runtime::RuntimeError&) {});
}

void RollbackJournal::Undo(PageFile& database) {
    Restore(database, true);
}

void RollbackJournal::Recover(PageFile& database) {
    Restore(database, false);
}

// A change that is all there may still be on its way to the disk, so that has to be waited for too.
void RollbackJournal::Restore(PageFile& database, bool even_if_complete) {
    {
        const std::unique_ptr<PageFile> journal = files_.Open(path_, OpenMode::kRead);
        ByteList content(journal->size());
        journal->Read(0, content);
        const KeptState kept(content);
        if (kept.IsComplete()) {
            if (even_if_complete || !kept.IsIn(database))
                kept.WriteTo(database);
            database.Sync();
        }
    }
    files_.Remove(path_);
}

}  // namespace ledgix::jet
