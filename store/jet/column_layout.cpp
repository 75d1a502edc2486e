#include "column_layout.h"

#include <algorithm>
#include <utility>

namespace ledgix::jet {

namespace {

constexpr std::uint16_t kBooleanLength = 1;

std::uint16_t NextOrdinal(const TableDefinition& table) {
    std::uint16_t next = 0;
    for (const Column& column : table.columns)
        next = std::max<std::uint16_t>(next, static_cast<std::uint16_t>(column.ordinal + 1));
    return next;
}

}  // namespace

std::size_t FixedPartSize(const TableDefinition& table) {
    std::size_t size = 0;
    for (const Column& column : table.columns) {
        if (column.fixed && column.type != ColumnType::kBoolean)
            size = std::max<std::size_t>(size, column.fixed_offset + column.length);
    }
    return size;
}

void AddColumn(const Format& format, TableDefinition& table, Column column) {
    const std::size_t fixed_size = FixedSize(column.type);
    const bool boolean = column.type == ColumnType::kBoolean;
    column.fixed = boolean || (fixed_size != 0 && column.type != ColumnType::kNumeric);
    if (boolean)
        column.length = kBooleanLength;
    else if (fixed_size != 0)
        column.length = static_cast<std::uint16_t>(fixed_size);
    column.number = table.columns_ever++;
    column.variable_index = table.variable_columns_ever;
    column.ordinal = table.system ? std::uint16_t{0} : NextOrdinal(table);
    if (!column.fixed)
        ++table.variable_columns_ever;
    else if (!boolean)
        column.fixed_offset = static_cast<std::uint16_t>(FixedPartSize(table));
    column.sort_order = column.type == ColumnType::kNumeric ? std::uint16_t{0} : kSortOrder;
    column.character_size = static_cast<std::uint8_t>(format.character_size);
    column.flags = static_cast<std::uint8_t>(column.flags | kColumnUpdatable | (column.fixed ? kColumnFixed : 0) |
                                             (table.system ? kColumnOfSystemTable : 0));
    column.autonumber = (column.flags & (kColumnAutonumber | kColumnAutonumberGuid)) != 0;
    table.columns.push_back(std::move(column));
}

}  // namespace ledgix::jet
