#include "row_check.h"

#include <algorithm>

#include "byte_order.h"
#include "damage_error.h"
#include "row_view.h"
#include "text.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

constexpr std::uint8_t kNegativeNumeric = 0x80;

std::size_t LoadSmall(Bytes bytes, std::size_t at, std::size_t size) {
    return size == 1 ? bytes[at] : LoadU16(bytes, at);
}

}  // namespace

struct RowCheck::Parts {
    std::size_t count = 0;  // columns that the row knows
    std::size_t mask_at = 0;
    std::size_t fixed_end = 0;
    std::vector<std::size_t> offsets;  // of the variable columns, and their end; empty without such a part

    bool Bit(Bytes row, std::size_t column) const {
        return column < count && (row[mask_at + column / 8] >> (column % 8) & 1) != 0;
    }
};

RowCheck::RowCheck(CheckRun& run, const TableDefinition& table, LongValueCheck& long_values)
    : run_(run),
      table_(table),
      long_values_(long_values),
      first_variable_column_(RowShape(table).first_variable_column) {}

bool RowCheck::Check(Bytes row, RowId place) {
    row_ = row;
    place_ = place;
    if (row.size() > run_.format.row.longest)
        Fail("D14", "it has " + std::to_string(row.size()) + " bytes");
    if (row.size() < kShortestRow)
        run_.findings.AddIfStrict("D14", Describe(place) + ": it has " + std::to_string(row.size()) + " bytes");
    Parts parts;
    if (!FindParts(parts) || !CheckFixedPart(parts))
        return false;
    bool sound = true;
    for (const Column& column : table_.columns)
        sound = CheckValue(parts, column) && sound;
    return sound;
}

bool RowCheck::FindParts(Parts& parts) {
    const std::size_t count_size = run_.format.row.count_size;
    if (row_.size() < count_size)
        return Fail("D8", "it has no count of columns");
    parts.count = LoadSmall(row_, 0, count_size);
    if (parts.count > table_.columns_ever)
        return Fail("D8", "it knows " + std::to_string(parts.count) + " columns, and its table had " +
                              std::to_string(table_.columns_ever));
    const std::size_t mask_size = (parts.count + 7) / 8;
    if (row_.size() < count_size + mask_size)
        return Fail("D8", "it has no room for its null mask");
    parts.mask_at = row_.size() - mask_size;
    parts.fixed_end = parts.mask_at;
    const bool has_variable_columns = first_variable_column_ < table_.columns_ever;
    if (parts.count > first_variable_column_)
        return FindVariablePart(parts) || Fail("D9", "the places of its variable columns contradict each other");
    Parts older = parts;
    if (has_variable_columns && !FindVariablePart(older))
        run_.findings.AddIfStrict("D15", Describe(place_) + ": it has no variable columns at all");
    return true;
}

// From the end: null mask, number of variable columns, jumps (Jet 3), then the offsets backwards.
bool RowCheck::FindVariablePart(Parts& parts) const {
    const RowLayout& layout = run_.format.row;
    const std::size_t size = layout.offset_size;
    const std::size_t jumps = layout.has_jump_table && !row_.empty() ? (row_.size() - 1) / 256 : 0;
    if (parts.mask_at < layout.count_size + size)
        return false;
    const std::size_t count_at = parts.mask_at - size;
    const std::size_t count = LoadSmall(row_, count_at, size);
    if (count > table_.variable_columns_ever || count_at < layout.count_size + jumps + size * (count + 1))
        return false;
    const std::size_t table_at = count_at - jumps - size * (count + 1);  // of the last offset, the end
    const std::size_t real_jumps = table_at / 256 < jumps ? jumps - 1 : jumps;
    std::size_t base = 0;
    for (std::size_t i = 0; i <= count; ++i) {
        while (base < real_jumps && row_[count_at - 1 - base] == i)
            ++base;
        parts.offsets.push_back(LoadSmall(row_, table_at + size * (count - i), size) + 256 * base);
    }
    parts.fixed_end = parts.offsets.front();
    return parts.fixed_end >= layout.count_size && parts.offsets.back() <= table_at &&
           std::is_sorted(parts.offsets.begin(), parts.offsets.end());
}

bool RowCheck::CheckFixedPart(const Parts& parts) {
    for (const Column& column : table_.columns) {
        const std::size_t end = run_.format.row.count_size + column.fixed_offset + column.length;
        const bool has_place = column.fixed && column.type != ColumnType::kBoolean && column.number < parts.count;
        if (has_place && end > parts.fixed_end)
            return Fail("D10", "it has no room for its column '" + column.name + "'");
    }
    return true;
}

bool RowCheck::CheckValue(const Parts& parts, const Column& column) {
    if (column.type == ColumnType::kBoolean || !parts.Bit(row_, column.number))
        return true;
    if (column.fixed)
        return CheckStored(column, row_.subspan(run_.format.row.count_size + column.fixed_offset, column.length));
    const std::size_t i = column.variable_index;
    if (i + 1 >= parts.offsets.size())
        return Fail("D9", "it has no place for its column '" + column.name + "'");
    return CheckStored(column, row_.subspan(parts.offsets[i], parts.offsets[i + 1] - parts.offsets[i]));
}

bool RowCheck::CheckStored(const Column& column, Bytes stored) {
    if (IsLongValue(column.type))
        return long_values_.Check(stored, place_, column);
    const std::size_t size = FixedSize(column.type);
    const std::string name = "its column '" + column.name + "' ";
    if (size != 0 && stored.size() != size)
        return Fail("D11", name + "has " + std::to_string(stored.size()) + " bytes");
    if (column.type == ColumnType::kText && !IsSoundText(column, stored))
        return Fail("D12", name + "is no text of its length");
    if (column.type == ColumnType::kBinary && stored.size() > column.length)
        return Fail("D12", name + "has " + std::to_string(stored.size()) + " bytes");
    if (column.type == ColumnType::kNumeric && (stored[0] & ~kNegativeNumeric) != 0)
        return Fail("D12", name + "has no sign");
    return true;
}

bool RowCheck::IsSoundText(const Column& column, Bytes stored) const {
    if (run_.format.generation == Generation::kJet3)
        return stored.size() <= column.length;
    const bool compressed = stored.size() >= 2 && stored[0] == 0xFF && stored[1] == 0xFE;
    if (!compressed)
        return stored.size() % 2 == 0 && stored.size() <= column.length;
    return runtime::ToUtf16(DecodeText(run_.format, stored)).size() <= column.Characters();
}

bool RowCheck::Fail(std::string_view code, const std::string& text) {
    run_.findings.Add(code, Describe(place_) + ": " + text);
    return false;
}

}  // namespace ledgix::jet
