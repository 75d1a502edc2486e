#pragma once

#include <cstdint>
#include <string>

#include "jet_format.h"
#include "table_definition.h"

namespace ledgix::test {

// A column to build. Numbers are stored fixed unless told otherwise.
struct ColumnSpec {
    std::string name;
    jet::ColumnType type = jet::ColumnType::kInt32;
    std::size_t characters = 0;    // of text, or bytes of binary
    bool stored_variable = false;  // a number that is stored like text
    bool compressed = false;
    std::uint8_t precision = 0;
    std::uint8_t scale = 0;
    std::uint8_t more_flags = 0;  // as stored

    bool IsFixed() const;
    std::uint16_t Length(const jet::Format& format) const;
};

// A column with its place in the table.
struct PlacedColumn {
    ColumnSpec spec;
    std::uint16_t number = 0;
    std::uint16_t variable_index = 0;
    std::uint16_t fixed_offset = 0;
    std::uint16_t ordinal = 0;
};

}  // namespace ledgix::test
