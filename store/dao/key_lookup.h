#pragma once

#include <optional>
#include <vector>

#include "jet_types.h"
#include "sql_expression.h"

namespace ledgix::jet {
class DatabaseFile;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

// The rows that can fulfil a bound condition, found by an index whose first columns it sets equal to whole numbers
// ("ProfileNumber = 3 and ..."); in the table's order. Each must still be held against the whole condition. Nothing
// when no index helps.
std::optional<std::vector<jet::RowId>> LookUpByKey(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                                   const Expression& condition);

}  // namespace ledgix::dao
