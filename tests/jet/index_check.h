#pragma once

#include <cstddef>
#include <string>

#include "database_file.h"

namespace ledgix::test {

// What came of checking an index against the rows of its table.
struct IndexCheck {
    std::size_t entries = 0;
    bool has_unknown_characters = false;  // the keys cannot be computed
    std::string difference;               // empty when every row has its entry and no entry lacks its row
};

IndexCheck CheckIndex(jet::DatabaseFile& file, const jet::TableDefinition& table, const jet::Index& index);

}  // namespace ledgix::test
