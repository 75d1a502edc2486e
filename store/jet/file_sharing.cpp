#include "file_sharing.h"

#include <algorithm>
#include <thread>

#include "runtime_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;
using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kGate = std::uint64_t{1} << 40;
constexpr std::uint64_t kData = kGate + 1;
constexpr std::uint64_t kQueue = kGate + 2;
constexpr std::uint64_t kTables = kGate << 1;

constexpr std::chrono::milliseconds kShortestPause{1};
constexpr std::chrono::milliseconds kLongestPause{16};
// Who has waited for so long is let in before who comes anew.
constexpr std::chrono::milliseconds kLongWait{200};

[[noreturn]] void RaiseLocked() {
    runtime::RaiseEngineError(ErrorNumber::kLockedByOther,
                              "Couldn't update; currently locked by another user of the database.");
}

bool ConcernsReading(TableUse use) {
    return use == TableUse::kRead || use == TableUse::kDenyRead;
}

}  // namespace

FileSharing::FileSharing(PageFile& file, FileSystem& files, const std::string& path)
    : file_(file), journal_(std::make_unique<RollbackJournal>(files, path)) {}

template <typename Attempt>
bool FileSharing::WaitFor(Attempt attempt) const {
    const auto deadline = Clock::now() + patience_;
    for (std::chrono::milliseconds pause = kShortestPause; !attempt(); pause = std::min(2 * pause, kLongestPause)) {
        if (Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

// One that writes again and again leaves the file for moments only, in which the others may never come to ask.
template <typename Attempt>
bool FileSharing::QueueFor(Attempt attempt) {
    const auto start = Clock::now();
    bool queued = false;
    const bool granted = WaitFor([&] {
        if (attempt())
            return true;
        if (!queued && Clock::now() - start >= kLongWait)
            queued = file_.TryLock(kQueue, LockKind::kShared);
        return false;
    });
    if (queued)
        file_.TryLock(kQueue, LockKind::kNone);
    return granted;
}

// Until they are in, or have had the time to ask.
void FileSharing::LetOthersIn() {
    const auto deadline = Clock::now() + 2 * kLongestPause;
    while (!file_.TryLock(kQueue, LockKind::kExclusive)) {
        if (Clock::now() >= deadline)
            return;
        std::this_thread::sleep_for(kShortestPause);
    }
    file_.TryLock(kQueue, LockKind::kNone);
}

bool FileSharing::TryToRead() {
    if (!file_.TryLock(kGate, LockKind::kShared))
        return false;
    const bool locked = file_.TryLock(kData, LockKind::kShared);
    file_.TryLock(kGate, LockKind::kNone);
    return locked;
}

void FileSharing::LockToRead() {
    for (;;) {
        if (!QueueFor([this] { return TryToRead(); }))
            RaiseLocked();
        if (!journal_ || !journal_->Exists())
            return;
        Unlock();
        if (!file_.IsWritable())
            runtime::RaiseEngineError(ErrorNumber::kCannotOpenFile,
                                      "The database was left in the middle of a change, which only someone who may "
                                      "write it can undo.");
        LockToWrite();
        Unlock();
    }
}

bool FileSharing::TryToWrite() {
    return file_.TryLock(kGate, LockKind::kExclusive) && file_.TryLock(kData, LockKind::kExclusive);
}

void FileSharing::LockToWrite() {
    if (!file_.IsWritable())
        runtime::RaiseEngineError(ErrorNumber::kDatabaseReadOnly, "Cannot update. Database or object is read-only.");
    LetOthersIn();
    if (!QueueFor([this] { return TryToWrite(); })) {
        file_.TryLock(kGate, LockKind::kNone);
        RaiseLocked();
    }
    if (!journal_ || !journal_->Exists())
        return;
    try {
        const FileStamp before = file_.Stamp();
        journal_->Recover(file_);
        file_.Touch(before);
    } catch (const runtime::RuntimeError&) {
        Unlock();
        throw;
    }
}

void FileSharing::Unlock() {
    file_.TryLock(kData, LockKind::kNone);
    file_.TryLock(kGate, LockKind::kNone);
}

// FNV-1a of the folded name; two names may meet in one place and then wait for each other without need.
std::uint64_t FileSharing::PlaceOf(std::string_view table, TableUse use) {
    std::uint32_t hash = 0x811C9DC5;
    for (const char character : runtime::FoldCase(table))
        hash = (hash ^ static_cast<std::uint8_t>(character)) * 0x01000193;
    return kTables + 2 * std::uint64_t{hash} + (ConcernsReading(use) ? 0 : 1);
}

// A lock that only a writer of the file can have is no obstacle to one who may just read.
bool FileSharing::SetPlace(std::uint64_t place, const Uses& uses) {
    if (uses.exclusive > 0 && file_.IsWritable())
        return file_.TryLock(place, LockKind::kExclusive);
    return file_.TryLock(place, uses.exclusive + uses.shared > 0 ? LockKind::kShared : LockKind::kNone);
}

void FileSharing::LockPlace(std::uint64_t place, bool exclusive) {
    Uses uses = places_[place];
    ++(exclusive ? uses.exclusive : uses.shared);
    if (!WaitFor([&] { return SetPlace(place, uses); }))
        runtime::RaiseEngineError(ErrorNumber::kTableInUse,
                                  "Couldn't lock the table; it is in use by another user of the database.");
    places_[place] = uses;
}

void FileSharing::UnlockPlace(std::uint64_t place, bool exclusive) {
    Uses& uses = places_[place];
    --(exclusive ? uses.exclusive : uses.shared);
    SetPlace(place, uses);
    if (uses.exclusive + uses.shared == 0)
        places_.erase(place);
}

}  // namespace ledgix::jet
