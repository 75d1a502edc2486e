#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jet_types.h"

namespace ledgix::jet {

// Codes as stored. A code that is not listed may occur; such a column holds opaque bytes.
enum class ColumnType : std::uint8_t {
    kBoolean = 1,
    kByte = 2,
    kInt16 = 3,
    kInt32 = 4,
    kCurrency = 5,
    kSingle = 6,
    kDouble = 7,
    kDate = 8,
    kBinary = 9,
    kText = 10,
    kOle = 11,
    kMemo = 12,
    kGuid = 15,
    kNumeric = 16,  // Jet 4 only
    kOpaque17 = 17,
};

// Bytes that a value of the type takes in a row when their number is the same for all values, else 0.
std::size_t FixedSize(ColumnType type);

// Whether values of the type are kept outside the row, with a header inside it.
bool IsLongValue(ColumnType type);

struct Column {
    std::string name;
    ColumnType type = ColumnType::kBinary;
    std::uint16_t number = 0;          // never reused: gaps where columns were dropped
    std::uint16_t variable_index = 0;  // place among the variable columns; of a fixed column: those before it
    bool fixed = false;                // where it is stored; a number column may be variable
    std::uint16_t fixed_offset = 0;    // within the fixed part of a row
    std::uint16_t length = 0;          // bytes as stored; 0 for long values
    std::uint8_t precision = 0;        // digits of a numeric column
    std::uint8_t scale = 0;            // digits of a numeric column behind the decimal point
    bool autonumber = false;           // counts up (int32) or is drawn (GUID)
    bool compressed = false;           // text may be stored with one byte a character (Jet 4)
    std::uint16_t ordinal = 0;         // place for display, from 0 or 1; 0 in all columns of system tables
    std::uint8_t flags = 0;            // as stored
    std::uint16_t sort_order = 0;      // as stored; numeric columns have none
    std::uint8_t character_size = 1;   // bytes of a character of text that is not compressed
    // Of long values: maps of the pages. No second map where its page is 0.
    RowId owned_map{};
    RowId free_space_map{};

    // The longest text that a text column takes.
    std::size_t Characters() const { return length / character_size; }
};

struct IndexColumn {
    std::uint16_t column_number = 0;
    bool ascending = true;
    bool operator==(const IndexColumn&) const = default;
};

// The side of a relation that an index stands for.
struct IndexRelation {
    bool referenced_side = false;   // true: rows of the other table refer to this one
    PageNumber other_table = 0;     // its definition page
    std::uint32_t other_index = 0;  // logical number there
    bool cascades_updates = false;
    bool cascades_deletes = false;
};

// A logical index together with the real one behind it. Several may share a real one, and so their root.
struct Index {
    std::string name;
    std::vector<IndexColumn> columns;  // at most 10
    bool unique = false;
    bool primary = false;
    bool ignore_nulls = false;  // rows whose key columns are all null have no entry
    bool required = false;      // no nulls in key columns
    bool is_relation = false;
    PageNumber root = 0;
    RowId map{};  // of the pages of the tree
    std::uint32_t logical_number = 0;
    std::uint32_t real_number = 0;
    std::uint32_t built_entries = 0;  // a statistic: entries when the tree was last built over rows
    std::uint32_t distinct_keys = 0;  // a statistic: may be too high
    std::optional<IndexRelation> relation;
};

struct TableDefinition {
    PageNumber page = 0;  // the identity of the table
    bool system = false;
    std::uint32_t row_count = 0;  // lags behind in system tables
    std::uint32_t last_autonumber = 0;
    std::uint16_t columns_ever = 0;           // number of the next column
    std::uint16_t variable_columns_ever = 0;  // index of the next variable column
    RowId owned_map;                          // of the data pages
    RowId free_space_map;                     // of those worth trying for an insert
    std::vector<Column> columns;              // by ordinal, then in record order
    std::vector<Index> indexes;               // in record order

    // The position in `columns` of the name in any case, or of a column number.
    std::optional<std::size_t> FindColumn(std::string_view name) const;
    std::optional<std::size_t> FindColumnByNumber(std::uint16_t number) const;
    const Index* FindIndex(std::string_view name) const;
    const Index* PrimaryKey() const;
};

// The positions of memo and OLE columns, by column number.
std::vector<std::size_t> LongColumns(const TableDefinition& table);

}  // namespace ledgix::jet
