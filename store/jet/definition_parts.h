#pragma once

#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "table_definition.h"

namespace ledgix::jet {

// A table definition taken apart into its records, byte for byte, so that some can be added without touching the rest.
struct DefinitionParts {
    using Records = std::vector<std::vector<std::uint8_t>>;

    std::vector<std::uint8_t> header;  // up to the statistics
    Records statistics;                // of the real indexes
    Records columns;
    Records column_names;  // with their lengths
    Records index_blocks;  // of the real indexes
    Records logical_indexes;
    Records index_names;
    Records long_column_maps;
};

// Error 3049 when the definition is cut off.
DefinitionParts SplitDefinition(const Format& format, Bytes definition);

// Puts the parts together; the length and the numbers of columns and indexes in the header follow from them.
std::vector<std::uint8_t> JoinDefinition(const Format& format, const DefinitionParts& parts);

// The single records. Those of real indexes are made from one of the logical indexes that share them.
std::vector<std::uint8_t> MakeDefinitionHeader(const Format& format, const TableDefinition& table);
std::vector<std::uint8_t> MakeStatistics(const Format& format, const Index& index);
std::vector<std::uint8_t> MakeColumnRecord(const Format& format, const Column& column);
std::vector<std::uint8_t> MakeIndexBlock(const Format& format, const Index& index);
std::vector<std::uint8_t> MakeLogicalIndex(const Format& format, const Index& index);
std::vector<std::uint8_t> MakeLongColumnMaps(const Column& column);
std::vector<std::uint8_t> MakeStoredName(const Format& format, const std::string& name);

}  // namespace ledgix::jet
