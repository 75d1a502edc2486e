#pragma once

#include <cstddef>

#include "sql_parser.h"

namespace ledgix::jet {
class DatabaseFile;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

// Runs a statement that changes its table, inside a transaction; when it fails, the transaction must be given up. An
// update computes every new value from the rows as they were. The result is the number of rows that it touched.
// Errors: 3061 names that no column bears, 3127 such a name in the list of an insert, 3346 not as many values as
// columns, 3063 a column named twice, 3164 a column that counts by itself, those of ConvertToColumn and
// jet::TableWriter.
std::size_t RunAction(jet::DatabaseFile& file, const jet::TableDefinition& table, ActionStatement statement);

}  // namespace ledgix::dao
