#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "access.h"
#include "page_file.h"
#include "rollback_journal.h"

namespace ledgix::jet {

// Who may read and write a file that several programs have open, by locks on places that no file reaches to.
//
//   gate   held exclusively by who waits for, or has, the right to write: readers that come later wait behind it
//   data   held shared by readers, exclusively by the writer
//   queue  held shared by who has waited long: writers that come later let them go first
//   tables two places each: readers and who denies reading, writers and who denies writing
class FileSharing {
public:
    // A file without a path has no journal. `file` must outlive this.
    FileSharing(PageFile& file, FileSystem& files, const std::string& path);
    explicit FileSharing(PageFile& file) : file_(file) {}

    // How long to wait for others; 5 seconds at first.
    void SetPatience(std::chrono::milliseconds patience) { patience_ = patience; }

    // An incomplete change that a former writer left is undone first. Errors: 3260 when others are in the way for too
    // long, 3027 to write when the file may not be written, 3051 to read when there is something to undo and the right
    // is missing.
    void LockToRead();
    void LockToWrite();
    void Unlock();

    // Of the file while it is locked to write; nothing for a file without one.
    RollbackJournal* journal() { return journal_.get(); }

    // A place for what is done with a table of this name, in any case.
    static std::uint64_t PlaceOf(std::string_view table, TableUse use);
    void LockPlace(std::uint64_t place, bool exclusive);
    void UnlockPlace(std::uint64_t place, bool exclusive);

private:
    struct Uses {
        int shared = 0;
        int exclusive = 0;
    };

    bool TryToRead();
    bool TryToWrite();
    bool SetPlace(std::uint64_t place, const Uses& uses);
    template <typename Attempt>
    bool WaitFor(Attempt attempt) const;
    template <typename Attempt>
    bool QueueFor(Attempt attempt);
    void LetOthersIn();

    PageFile& file_;
    std::unique_ptr<RollbackJournal> journal_;
    std::chrono::milliseconds patience_{5000};
    std::map<std::uint64_t, Uses> places_;
};

}  // namespace ledgix::jet
