#include "rollback_journal.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "byte_order.h"
#include "files.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

constexpr std::uint8_t kMark[8]{'L', 'G', 'X', 'J', 'R', 'N', 'L', '1'};
constexpr std::size_t kPageSizeAt = 8;
constexpr std::size_t kPageCountAt = 12;
constexpr std::size_t kKeptCountAt = 16;
constexpr std::size_t kChecksumAt = 24;
constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kNumberSize = 4;

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

std::uint64_t Checksum(Bytes journal) {
    constexpr std::uint64_t kStart = 0xCBF29CE484222325;
    return Mix(Mix(kStart, journal.first(kChecksumAt)), journal.subspan(kHeaderSize));
}

// What a complete journal says.
struct KeptState {
    std::size_t page_size = 0;
    std::uint64_t page_count = 0;
    std::size_t kept_count = 0;

    std::size_t EntrySize() const { return kNumberSize + page_size; }
};

bool ReadState(Bytes journal, KeptState& state) {
    if (journal.size() < kHeaderSize || !std::equal(std::begin(kMark), std::end(kMark), journal.begin()))
        return false;
    state.page_size = LoadU32(journal, kPageSizeAt);
    state.page_count = LoadU32(journal, kPageCountAt);
    state.kept_count = LoadU32(journal, kKeptCountAt);
    return (journal.size() - kHeaderSize) / state.EntrySize() == state.kept_count &&
           (journal.size() - kHeaderSize) % state.EntrySize() == 0 &&
           LoadU64(journal, kChecksumAt) == Checksum(journal);
}

}  // namespace

RollbackJournal::RollbackJournal(FileSystem& files, const std::string& database_path)
    : files_(files), database_path_(RealPath(database_path)), path_(database_path_ + ".journal") {}

void RollbackJournal::Write(PageFile& database, std::size_t page_size, PageNumber page_count,
                            const std::vector<PageNumber>& pages) {
    ByteList content(kHeaderSize + pages.size() * (kNumberSize + page_size));
    std::copy(std::begin(kMark), std::end(kMark), content.begin());
    StoreLittle(content, kPageSizeAt, static_cast<std::uint32_t>(page_size));
    StoreLittle(content, kPageCountAt, page_count);
    StoreLittle(content, kKeptCountAt, static_cast<std::uint32_t>(pages.size()));
    std::size_t at = kHeaderSize;
    for (const PageNumber page : pages) {
        StoreLittle(content, at, page);
        database.Read(std::uint64_t{page} * page_size, std::span(content).subspan(at + kNumberSize, page_size));
        at += kNumberSize + page_size;
    }
    StoreLittle(content, kChecksumAt, Checksum(content));
    try {
        journal_ = files_.Create(path_, database_path_);
        journal_->Write(0, content);
        journal_->Sync();
        files_.SyncFolderOf(path_);
    } catch (const runtime::RuntimeError&) {
        Discard();
        throw;
    }
}

void RollbackJournal::Finish() {
    constexpr std::uint8_t kDone[sizeof kMark]{};
    try {
        journal_->Write(0, kDone);
        journal_->Sync();
    } catch (const runtime::RuntimeError&) {
        journal_->Write(0, kMark);
        throw;
    }
    Discard();
}

// A journal that stays where it is does no harm: it is not complete, or the file has the content that it describes.
void RollbackJournal::Discard() {
    journal_.reset();
    try {
        files_.Remove(path_);
    } catch (const runtime::RuntimeError&) {
    }
}

void RollbackJournal::PlayBack(PageFile& database) {
    journal_.reset();
    if (Exists() && Restore(database))
        database.Sync();
    files_.Remove(path_);
}

bool RollbackJournal::Restore(PageFile& database) {
    const std::unique_ptr<PageFile> journal = files_.Open(path_, OpenMode::kRead);
    ByteList content(journal->size());
    journal->Read(0, content);
    KeptState state;
    if (!ReadState(content, state))
        return false;
    for (std::size_t at = kHeaderSize; at < content.size(); at += state.EntrySize())
        database.Write(std::uint64_t{LoadU32(content, at)} * state.page_size,
                       Bytes(content).subspan(at + kNumberSize, state.page_size));
    database.Resize(state.page_count * state.page_size);
    return true;
}

}  // namespace ledgix::jet
