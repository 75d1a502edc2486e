#include "row_reader.h"

#include <algorithm>
#include <string>

#include "byte_order.h"
#include "damage_error.h"
#include "database_file.h"
#include "value_codec.h"

namespace ledgix::jet {

namespace {

constexpr std::string_view kWhat = "data page of the table";

// One is all that was ever seen.
constexpr int kMostPointers = 8;

}  // namespace

RowReader::RowReader(DatabaseFile& file, const TableDefinition& table)
    : file_(file), table_(table), shape_(table), long_values_(file.pager()), charged_columns_(table.columns.size()) {}

bool RowReader::Load(RowId home) {
    charged_ = 0;
    const DataPage page(file_.pager(), home.page, table_.page, kWhat);
    return home.slot < page.slot_count() && Load(page, home.slot);
}

bool RowReader::Load(const DataPage& page, std::uint8_t slot) {
    const std::uint16_t flags = page.flags(slot);
    if ((flags & kSlotHidden) != 0)
        return false;
    id_ = {.page = page.number(), .slot = slot};
    std::fill(charged_columns_.begin(), charged_columns_.end(), false);
    moves_.clear();
    const Bytes row = page.row(slot);
    if ((flags & kSlotPointer) != 0) {
        FollowPointers(row);
    } else {
        page_ = page;
        row_ = RowView(file_.format(), shape_, row, id_);
    }
    return true;
}

void RowReader::FollowPointers(Bytes pointer) {
    RowId place = id_;
    for (int i = 0; i < kMostPointers; ++i) {
        if (pointer.size() < kRowPointerSize)
            RaiseDamage(Describe(place) + " is too short for the pointer to where it moved");
        place = LoadRowPointer(pointer, 0);
        moves_.push_back(place);
        page_ = DataPage(file_.pager(), place.page, table_.page, kWhat);
        if (place.slot >= page_.slot_count() || page_.flags(place.slot) == kSlotDeleted || page_.flags(place.slot) == 0)
            RaiseDamage(Describe(id_) + " moved to " + Describe(place) + ", where no row is hidden");
        pointer = page_.row(place.slot);
        if (page_.flags(place.slot) == kSlotHidden) {
            row_ = RowView(file_.format(), shape_, pointer, place);
            return;
        }
    }
    RaiseDamage(Describe(id_) + " moved, and the pointers to it do not end");
}

std::optional<Bytes> RowReader::Stored(std::size_t column_position) const {
    const Column& column = table_.columns[column_position];
    if (column.type != ColumnType::kBoolean)
        return StoredBytes(column);
    return row_.Bit(column.number) ? std::optional(Bytes()) : std::nullopt;
}

bool RowReader::IsNull(std::size_t column_position) const {
    const Column& column = table_.columns[column_position];
    return column.type != ColumnType::kBoolean && !StoredBytes(column);
}

std::optional<Bytes> RowReader::StoredBytes(const Column& column) const {
    if (!row_.Bit(column.number))
        return std::nullopt;
    return column.fixed ? row_.Fixed(column) : row_.Variable(column);
}

runtime::Variant RowReader::Value(std::size_t column_position) {
    const Column& column = table_.columns[column_position];
    if (column.type == ColumnType::kBoolean)
        return row_.Bit(column.number);
    const std::optional<Bytes> stored = StoredBytes(column);
    if (!stored)
        return runtime::Null{};
    if (IsLongValue(column.type))
        return LongColumnValue(column_position, *stored);
    const std::size_t size = FixedSize(column.type);
    if (size != 0 && stored->size() != size)
        RaiseDamage("column '" + column.name + "' in " + Describe(id_) + " has " + std::to_string(stored->size()) +
                    " bytes");
    return DecodeValue(file_.format(), column, *stored);
}

runtime::Variant RowReader::LongColumnValue(std::size_t column_position, Bytes field) {
    const LongValue value = ParseLongValue(field, id_);
    if (value.kind != LongValue::Kind::kInside)
        Charge(column_position, value.length);
    return DecodeLongValue(file_.format(), table_.columns[column_position], long_values_.Read(value));
}

void RowReader::Charge(std::size_t column_position, std::uint32_t bytes) {
    if (charged_columns_[column_position])
        return;
    charged_columns_[column_position] = true;
    charged_ += bytes;
    if (charged_ > file_.pager().size())
        RaiseDamage("the long values up to " + Describe(id_) + " are longer than the file");
}

}  // namespace ledgix::jet
