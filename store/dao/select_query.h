#pragma once

#include <memory>

#include "recordset.h"
#include "sql_parser.h"

namespace ledgix::jet {
class DatabaseFile;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

// A column of the file as a field.
Collection<Field> FieldsOf(const jet::TableDefinition& table);

// Runs a select statement on its table: rows in the table's order, or sorted by the order clause; rows whose keys are
// equal keep the table's order. Errors: 3061 when a name is no column of the table.
std::unique_ptr<Recordset> RunSelect(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                     SelectStatement statement, RecordsetType type);

}  // namespace ledgix::dao
