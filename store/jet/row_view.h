#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "jet_format.h"
#include "jet_types.h"
#include "table_definition.h"

namespace ledgix::jet {

// What the decoding of rows needs to know of their table.
struct RowShape {
    explicit RowShape(const TableDefinition& table);

    std::uint16_t columns_ever;
    // The lowest number of a variable column. Rows that know this column have a variable section; that of others
    // matters to nobody, and it may be missing.
    std::uint32_t first_variable_column;
};

// One encoded row, decoded where it stands. A row knows how many columns its table had when it was written.
class RowView {
public:
    RowView() = default;

    // `place` is for error texts. Error 3049, here and below, when the row contradicts itself.
    RowView(const Format& format, const RowShape& shape, Bytes row, RowId place);

    // The bit of the null mask: not null, or the value of a boolean. False when the row is older than the column.
    bool Bit(std::uint16_t column_number) const;

    // The bytes of a column whose bit is set. Empty when the row does not know the variable column.
    Bytes Fixed(const Column& column) const;
    std::optional<Bytes> Variable(const Column& column) const;

private:
    void FindVariableSection(const Format& format);
    std::size_t VariableOffset(std::size_t index) const;
    [[noreturn]] void Raise(const char* fault) const;

    Bytes row_;
    RowId place_;
    std::uint16_t count_ = 0;
    std::size_t mask_at_ = 0;
    std::size_t fixed_at_ = 0;
    std::size_t fixed_end_ = 0;
    std::size_t offset_size_ = 0;
    std::size_t variable_count_ = 0;
    std::size_t first_offset_at_ = 0;  // of variable column 0; the others stand before it, descending
    std::size_t jumps_at_ = 0;         // of jump 0; the others stand before it
    std::size_t jump_count_ = 0;
};

}  // namespace ledgix::jet
