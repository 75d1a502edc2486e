#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jet_types.h"
#include "page_file.h"
#include "pager.h"

namespace ledgix::jet {

// The pages of a database file as they were before a change, in a file beside it, for as long as the change is not
// complete. Whoever opens the database and finds one undoes the change, unless all of it is there. Whoever uses it
// holds the database exclusively.
//
//   0   8  "LGXJRNL1"
//   8   4  size of a page, 12: pages of the file before the change, 16: pages changed, new ones included
//   20  4  pages kept: those changed that the file had before
//   24  8  checksum of all that precedes and follows
//   32     for each page changed, ascending: its number, 4 bytes, and the checksum of its new content, 8 bytes;
//          then the old content of each page kept
//
// Numbers are little-endian. A journal that is cut off or has another checksum was never finished; then no page of the
// database has been overwritten yet. Since a complete change is known by its checksums, the journal of one may come
// back from the disk without harm, and removing it needs no waiting for the disk.
class RollbackJournal {
public:
    // Stands beside the file that `database_path` names, links followed.
    RollbackJournal(FileSystem& files, const std::string& database_path);

    bool Exists() const { return files_.Exists(path_); }

    // Keeps what a change is about to overwrite; it is read from the database. `pages` ascend. Synced when it returns;
    // a failure leaves no journal, or one that changes nothing.
    void Write(PageFile& database, PageNumber page_count_before, const std::vector<PagePtr>& pages);

    // The change is in the database and synced.
    void Discard();

    // Brings back what the last Write kept.
    void Undo(PageFile& database);

    // Undoes what a former program began, if it is not complete.
    void Recover(PageFile& database);

private:
    void Restore(PageFile& database, bool even_if_complete);

    FileSystem& files_;
    std::string database_path_;
    std::string path_;
};

}  // namespace ledgix::jet
