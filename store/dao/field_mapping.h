#pragma once

#include "table_def.h"

namespace ledgix::jet {
struct Column;
struct Index;
struct NewColumn;
struct NewIndex;
struct TableDefinition;
}  // namespace ledgix::jet

// Columns and indexes of the file as the objects that callers see, and back.
namespace ledgix::dao {

Field FieldOf(const jet::Column& column);
Collection<Field> FieldsOf(const jet::TableDefinition& table);
Index IndexOf(const jet::Index& index, const jet::TableDefinition& table);

// A size that no field can have becomes one that is refused when the column is made.
jet::NewColumn NewColumnOf(const Field& field);
jet::NewIndex NewIndexOf(const Index& index);

}  // namespace ledgix::dao
