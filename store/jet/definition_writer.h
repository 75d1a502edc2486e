#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "table_definition.h"

namespace ledgix::jet {

// The definition of a table as one piece. Columns and indexes are written in the order in which they stand. Every real
// index that is numbered must stand behind a logical one: error 3049 otherwise.
std::vector<std::uint8_t> EncodeDefinition(const Format& format, const TableDefinition& table);

// Pages that a definition of so many bytes takes.
std::size_t DefinitionPageCount(const Format& format, std::size_t size);

// The pages of a definition, each linked to the next: `numbers` are theirs, DefinitionPageCount in number, the first
// being that of the table.
std::vector<std::vector<std::uint8_t>> CutDefinition(const Format& format, Bytes definition,
                                                     const std::vector<PageNumber>& numbers);

}  // namespace ledgix::jet
