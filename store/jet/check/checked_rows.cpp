#include "checked_rows.h"

#include <algorithm>

#include "long_value.h"
#include "value_codec.h"

namespace ledgix::jet {

namespace {

// Longer values are no index keys that could be worth the time.
constexpr std::uint32_t kLongestFetched = 4096;

}  // namespace

std::optional<std::size_t> CheckedRows::Find(RowId home) const {
    const auto found =
        std::lower_bound(rows_.begin(), rows_.end(), RowNumber(home),
                         [](const LiveRow& row, std::uint32_t number) { return RowNumber(row.home) < number; });
    if (found == rows_.end() || found->home != home)
        return std::nullopt;
    return static_cast<std::size_t>(found - rows_.begin());
}

void CheckedRows::Open(std::size_t i) {
    const RowId place = rows_[i].place;
    page_ = RowPage(run_.pager, place.page);
    view_ = RowView(run_.format, shape_, page_.row(place.slot).value(), place);
}

std::optional<runtime::Variant> CheckedRows::Value(const Column& column) const {
    if (column.type == ColumnType::kBoolean)
        return view_.Bit(column.number);
    const std::optional<Bytes> stored = !view_.Bit(column.number) ? std::nullopt
                                        : column.fixed            ? view_.Fixed(column)
                                                                  : view_.Variable(column);
    if (!stored)
        return runtime::Null{};
    if (IsLongValue(column.type)) {
        const LongValue value = ParseLongValue(*stored, {});
        if (value.length > kLongestFetched)
            return std::nullopt;
        return DecodeLongValue(run_.format, column, LongValueReader(run_.pager).Read(value));
    }
    return DecodeValue(run_.format, column, *stored);
}

}  // namespace ledgix::jet
