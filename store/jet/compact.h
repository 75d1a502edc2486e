#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "page_file.h"
#include "variant.h"

namespace ledgix::jet {

class DatabaseFile;

// Objects of one kind that were left behind.
struct LeftOut {
    std::string kind;
    std::size_t count = 0;
};

struct Compacted {
    std::size_t tables = 0;
    std::size_t rows = 0;
    std::vector<LeftOut> left_out;  // kinds of which there were any
};

// Makes a new file of the same generation with the user's tables of `source`: their columns, rows and indexes. Values
// are copied as they are stored. An index of a relationship becomes an ordinary one, unless there is an equal one. What
// else is in the file stays behind. `like` is the path whose permissions the new file gets, `created` the date of its
// objects. The new file is on disk when this returns; when it fails, there is none. A ReadAccess is held on `source`.
// Errors: 3204 there is a file at `path`, 57 it cannot be made, 3259 a column of unknown type, 3251 a Jet 3 file of
// another code page than new ones have, 3026, and those of reading `source` and of CreateTable, CreateIndex and
// TableWriter.
Compacted Compact(DatabaseFile& source, const std::string& like, const std::string& path, runtime::Date created,
                  FileSystem& files = DiskFileSystem());

}  // namespace ledgix::jet
