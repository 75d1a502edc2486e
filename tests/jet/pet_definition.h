#pragma once

#include <string>

#include "jet_format.h"
#include "table_definition.h"

namespace ledgix::test {

// The table of pet_table.h, as the first user table of a fresh file: its definition as a value.
jet::TableDefinition MakePetDefinition(jet::Generation generation);

// A column of text of so many characters.
jet::Column TextColumn(const std::string& name, std::size_t characters, jet::Generation generation,
                       bool compressed = false);

jet::Column ColumnOf(const std::string& name, jet::ColumnType type);

}  // namespace ledgix::test
