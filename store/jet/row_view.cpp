#include "row_view.h"

#include <algorithm>
#include <string>

#include "byte_order.h"
#include "damage_error.h"

namespace ledgix::jet {

namespace {

std::size_t LoadSmall(Bytes bytes, std::size_t at, std::size_t size) {
    return size == 1 ? bytes[at] : LoadU16(bytes, at);
}

}  // namespace

RowShape::RowShape(const TableDefinition& table) : columns_ever(table.columns_ever), first_variable_column(~0U) {
    for (const Column& column : table.columns) {
        if (!column.fixed)
            first_variable_column = std::min<std::uint32_t>(first_variable_column, column.number);
    }
}

RowView::RowView(const Format& format, const RowShape& shape, Bytes row, RowId place)
    : row_(row), place_(place), fixed_at_(format.row.count_size), offset_size_(format.row.offset_size) {
    if (row.size() < fixed_at_)
        Raise("is too short");
    count_ = static_cast<std::uint16_t>(LoadSmall(row, 0, format.row.count_size));
    if (count_ > shape.columns_ever)
        Raise("has more columns than its table");
    const std::size_t mask_size = (count_ + 7U) / 8;
    if (row.size() < fixed_at_ + mask_size)
        Raise("is too short for its columns");
    mask_at_ = row.size() - mask_size;
    fixed_end_ = mask_at_;
    if (count_ > shape.first_variable_column)
        FindVariableSection(format);
}

void RowView::FindVariableSection(const Format& format) {
    if (mask_at_ < fixed_at_ + 2 * offset_size_)
        Raise("is too short for variable columns");
    const std::size_t count_at = mask_at_ - offset_size_;
    variable_count_ = LoadSmall(row_, count_at, offset_size_);
    // The jump table has an entry for each multiple of 256 below the length of the row.
    jump_count_ = format.row.has_jump_table ? (row_.size() - 1) / 256 : 0;
    const std::size_t before_count = jump_count_ + offset_size_ * (variable_count_ + 1);
    if (count_at < fixed_at_ + before_count)
        Raise("is too short for its variable columns");
    jumps_at_ = count_at - 1;
    first_offset_at_ = count_at - jump_count_ - offset_size_;
    const std::size_t end_at = count_at - before_count;
    // The last entry is a dummy when the data end before the multiple of 256 that it stands for.
    if (end_at / 256 < jump_count_)
        --jump_count_;
    fixed_end_ = VariableOffset(0);
    const std::size_t end = VariableOffset(variable_count_);
    if (fixed_end_ < fixed_at_ || fixed_end_ > end || end > end_at)
        Raise("has variable columns outside its data");
}

std::size_t RowView::VariableOffset(std::size_t index) const {
    std::size_t offset = LoadSmall(row_, first_offset_at_ - index * offset_size_, offset_size_);
    // Jump j names the first column whose offset is not below 256 * (j + 1).
    for (std::size_t j = 0; j < jump_count_; ++j) {
        if (row_[jumps_at_ - j] <= index)
            offset += 256;
    }
    return offset;
}

bool RowView::Bit(std::uint16_t column_number) const {
    return column_number < count_ && (row_[mask_at_ + column_number / 8U] >> (column_number & 7U) & 1) != 0;
}

Bytes RowView::Fixed(const Column& column) const {
    const std::size_t start = fixed_at_ + column.fixed_offset;
    if (start + column.length > fixed_end_)
        Raise("is too short for its fixed columns");
    return row_.subspan(start, column.length);
}

std::optional<Bytes> RowView::Variable(const Column& column) const {
    if (column.variable_index >= variable_count_)
        return std::nullopt;
    const std::size_t start = VariableOffset(column.variable_index);
    const std::size_t end = VariableOffset(column.variable_index + 1U);
    if (start < fixed_end_ || start > end || end > VariableOffset(variable_count_))
        Raise("has variable columns out of order");
    return row_.subspan(start, end - start);
}

void RowView::Raise(const char* fault) const {
    RaiseDamage(Describe(place_) + " " + fault);
}

}  // namespace ledgix::jet
