#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "check_run.h"
#include "checked_rows.h"
#include "raw_definition.h"

namespace ledgix::jet {

// A row of MSysObjects.
struct ObjectEntry {
    RowId row;
    std::int32_t id = 0;
    std::int32_t parent = 0;
    std::string name;
    std::int16_t type = 0;
};

// What the tables of the file say, put together.
struct ObjectFacts {
    std::vector<ObjectEntry> objects;
    std::set<std::int32_t> with_access;                          // objects that MSysACEs has entries for
    bool has_access_table = false;                               // it could be read
    std::map<PageNumber, std::vector<RawLogicalIndex>> indexes;  // of the tables whose definition is there
};

// Rows of the catalogue and of the access control entries. C1 where a column is missing.
std::vector<ObjectEntry> ReadObjects(CheckRun& run, CheckedRows& rows);
std::set<std::int32_t> ReadObjectsWithAccess(CheckRun& run, CheckedRows& rows);

// Rules of the catalogue, and of relations between tables.
void CheckObjects(CheckRun& run, const ObjectFacts& facts);

}  // namespace ledgix::jet
