#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check_run.h"
#include "table_definition.h"

namespace ledgix::jet {

// A table definition as its bytes are, contradictions included.
struct RawIndex {
    std::vector<IndexColumn> columns;
    RowId map;
    PageNumber root = 0;
    std::uint8_t flags = 0;
    std::uint32_t distinct_keys = 0;
};

struct RawLogicalIndex {
    std::string name;
    std::uint32_t number = 0;
    std::uint32_t real_number = 0;
    std::uint8_t type = 0;
    std::uint8_t relation_side = 0;
    std::uint32_t relation_index = 0;
    PageNumber relation_table = 0;
};

// Maps of the pages of a memo or OLE column.
struct RawLongColumn {
    std::uint16_t column_number = 0;
    RowId owned;
    RowId free_space;
};

struct RawDefinition {
    PageNumber page = 0;
    bool system = false;
    std::uint32_t row_count = 0;
    std::uint16_t columns_ever = 0;
    std::uint16_t variable_columns_ever = 0;
    RowId owned_map;
    RowId free_space_map;
    std::vector<Column> columns;  // in record order
    std::vector<RawIndex> real_indexes;
    std::vector<RawLogicalIndex> logical_indexes;
    std::vector<RawLongColumn> long_columns;
};

// Claims the pages of a definition and takes it apart; what of it cannot be found is left out, with a finding. None
// when not even its header is there.
std::optional<RawDefinition> ReadRawDefinition(CheckRun& run, PageNumber page);

}  // namespace ledgix::jet
