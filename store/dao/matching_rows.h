#pragma once

#include <functional>

#include "jet_types.h"
#include "sql_expression.h"

namespace ledgix::jet {
class DatabaseFile;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

// Calls visit for the rows of a table that fulfil a bound condition, in the table's order, by an index where one helps;
// for every row when the condition is null. Visit must not change the table.
void VisitMatchingRows(jet::DatabaseFile& file, const jet::TableDefinition& table, const Expression* where,
                       const std::function<void(jet::RowId, const Row&)>& visit);

}  // namespace ledgix::dao
