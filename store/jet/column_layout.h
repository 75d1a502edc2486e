#pragma once

#include "jet_format.h"
#include "table_definition.h"

namespace ledgix::jet {

// Gives a new column its place behind those that the table has or had, and appends it to table.columns. The caller sets
// name, type, flags for autonumber or contents, and of text (characters times their size) and binary columns the
// length; numbers are stored fixed. Rows that are there already need not change.
void AddColumn(const Format& format, TableDefinition& table, Column column);

// Where the fixed part of a row ends.
std::size_t FixedPartSize(const TableDefinition& table);

}  // namespace ledgix::jet
