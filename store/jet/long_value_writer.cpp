#include "long_value_writer.h"

#include <algorithm>

#include "byte_order.h"
#include "circle_guard.h"
#include "damage_error.h"
#include "data_page.h"
#include "jet_format.h"
#include "long_value.h"
#include "row_store.h"
#include "text_codec.h"
#include "value_codec.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

ByteList DataOf(const Format& format, const Column& column, const runtime::Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value); text != nullptr && column.type == ColumnType::kMemo)
        return EncodeText(format, *text, column.compressed);
    if (const auto* data = std::get_if<runtime::Binary>(&value); data != nullptr && column.type == ColumnType::kOle)
        return *data;
    RaiseConversion(column);
}

ByteList Field(std::uint32_t kind, std::size_t length, RowId place) {
    ByteList field(kLongValueHeader);
    StoreLittle(field, 0, static_cast<std::uint32_t>(length) | kind);
    StoreRowPointer(field, sizeof(std::uint32_t), place);
    return field;
}

RowStore StoreOf(Pager& pager, const Column& column) {
    return {pager, kLongValueOwner, column.owned_map, column.free_space_map};
}

// Pieces are stored from the last to the first, because each names the next one.
RowId StoreChain(RowStore& store, Bytes data, std::size_t longest) {
    const std::size_t piece = longest - kLongValuePointer;
    RowId next;
    for (std::size_t start = (data.size() - 1) / piece * piece;; start -= piece) {
        ByteList row(kLongValuePointer);
        StoreRowPointer(row, 0, next);
        const Bytes part = data.subspan(start, std::min(piece, data.size() - start));
        row.insert(row.end(), part.begin(), part.end());
        next = store.Append(row);
        if (start == 0)
            return next;
    }
}

}  // namespace

std::vector<std::uint8_t> LongValueWriter::Store(const Column& column, const runtime::Variant& value) {
    const Format& format = pager_.format();
    const ByteList data = DataOf(format, column, value);
    if (data.size() > kLongValueLength)
        RaiseConversion(column);
    if (data.size() <= format.longest_inside_value) {
        ByteList field = Field(kLongValueInside, data.size(), {});
        field.insert(field.end(), data.begin(), data.end());
        return field;
    }
    RowStore store = StoreOf(pager_, column);
    if (data.size() <= format.longest_value_row)
        return Field(kLongValueOneRow, data.size(), store.Append(data));
    return Field(kLongValueChain, data.size(), StoreChain(store, data, format.longest_value_row));
}

void LongValueWriter::Free(const Column& column, Bytes field, RowId row) {
    const LongValue value = ParseLongValue(field, row);
    if (value.kind == LongValue::Kind::kInside || value.length == 0)
        return;
    RowStore store = StoreOf(pager_, column);
    CircleGuard<RowId> guard;
    for (RowId place = value.place; place.page != 0;) {
        if (guard.RunsInCircle(place))
            RaiseDamage("the long value in " + Describe(value.place) + " runs in a circle");
        DataPage page;
        const Bytes piece = ReadRow(pager_, place, kLongValueOwner, 0, "long value", page);
        RowId next;
        if (value.kind == LongValue::Kind::kChain && piece.size() >= kLongValuePointer)
            next = LoadRowPointer(piece, 0);
        store.Delete(place);
        place = next;
    }
}

}  // namespace ledgix::jet
