#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet_types.h"
#include "page_file.h"

namespace ledgix::jet {

// The pages of a database file as they were before a change, in a file beside it, for as long as the change is not
// complete. Whoever opens the database and finds one brings the file back to the state that it describes. Whoever uses
// it holds the database exclusively.
//
//   0   8  "LGXJRNL1"; zeros when the change is complete
//   8   4  size of a page, 12: pages of the file before the change, 16: pages that follow
//   20  4  zero
//   24  8  checksum of all that precedes and follows
//   32     for each page its number, 4 bytes, and its content
//
// Numbers are little-endian. A journal that is cut off or has another checksum was never finished; then no page of the
// database has been overwritten yet.
class RollbackJournal {
public:
    // Stands beside the file that `database_path` names, links followed.
    RollbackJournal(FileSystem& files, const std::string& database_path);

    bool Exists() const { return files_.Exists(path_); }

    // Keeps these pages, which are read from the database. Synced when it returns; a failure leaves no journal, or one
    // that changes nothing.
    void Write(PageFile& database, std::size_t page_size, PageNumber page_count, const std::vector<PageNumber>& pages);

    // The change is in the database and synced. The journal means nothing any more when this returns; after a failure
    // it may be played back.
    void Finish();

    // Undoes an incomplete change, if there is one.
    void PlayBack(PageFile& database);

private:
    bool Restore(PageFile& database);
    void Discard();

    FileSystem& files_;
    std::string database_path_;
    std::string path_;
    std::unique_ptr<PageFile> journal_;  // of the change that is under way
};

}  // namespace ledgix::jet
