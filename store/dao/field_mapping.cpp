#include "field_mapping.h"

#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "schema_writer.h"

namespace ledgix::dao {

Field FieldOf(const jet::Column& column) {
    Field field;
    field.name = column.name;
    field.type = static_cast<FieldType>(column.type);
    field.size = column.type == jet::ColumnType::kText ? static_cast<int>(column.Characters()) : column.length;
    field.attributes = column.fixed ? kFixedField : kVariableField;
    if (column.autonumber)
        field.attributes |= kAutoIncrementField;
    return field;
}

Collection<Field> FieldsOf(const jet::TableDefinition& table) {
    Collection<Field> fields;
    for (const jet::Column& column : table.columns)
        fields.Append(FieldOf(column));
    return fields;
}

Index IndexOf(const jet::Index& index, const jet::TableDefinition& table) {
    Index result{index.name, {}, index.primary, index.unique, index.required, index.ignore_nulls, index.is_relation};
    for (const jet::IndexColumn& column : index.columns)
        if (const std::optional<std::size_t> position = table.FindColumnByNumber(column.column_number))
            result.fields.push_back({table.columns[*position].name, !column.ascending});
    return result;
}

jet::NewColumn NewColumnOf(const Field& field) {
    jet::NewColumn column;
    column.name = field.name;
    column.type = static_cast<jet::ColumnType>(field.type);
    column.autonumber = (field.attributes & kAutoIncrementField) != 0;
    constexpr int kLargest = std::numeric_limits<std::uint16_t>::max();
    if (field.type == kText || field.type == kBinary)
        column.size = static_cast<std::uint16_t>(field.size >= 0 && field.size < kLargest ? field.size : kLargest);
    return column;
}

jet::NewIndex NewIndexOf(const Index& index) {
    jet::NewIndex result;
    result.name = index.name;
    result.primary = index.primary;
    result.unique = index.unique;
    result.required = index.required;
    result.ignore_nulls = index.ignore_nulls;
    for (const IndexField& field : index.fields)
        result.parts.push_back({field.name, !field.descending});
    return result;
}

}  // namespace ledgix::dao
