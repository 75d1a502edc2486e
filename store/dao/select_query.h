#pragma once

#include <memory>

#include "recordset.h"
#include "sql_parser.h"

namespace ledgix::jet {
class DatabaseFile;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

class SchemaCache;

// Runs a select statement on its table: rows in the table's order, or sorted by the order clause; rows whose keys are
// equal keep the table's order. The schema must outlive a recordset that may be edited. Errors: 3061 when a name is no
// column of the table.
std::unique_ptr<Recordset> RunSelect(SchemaCache& schema, std::shared_ptr<const jet::TableDefinition> table,
                                     SelectStatement statement, RecordsetType type, bool updatable);

// Hands out the same rows in the same order. Unless they are sorted, none is kept.
void VisitSelected(jet::DatabaseFile& file, const jet::TableDefinition& table, SelectStatement statement,
                   const RowVisitor& visit);

}  // namespace ledgix::dao
