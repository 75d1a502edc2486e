#include "value_codec.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "byte_order.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

constexpr std::uint8_t kNegative = 0x80;

// Stored as u32, u16, u16 little-endian and 8 bytes.
runtime::Guid DecodeGuid(Bytes stored) {
    constexpr std::array<std::size_t, 16> kStoredAt{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    runtime::Guid guid;
    for (std::size_t i = 0; i < kStoredAt.size(); ++i)
        guid.bytes[i] = stored[kStoredAt[i]];
    return guid;
}

// Sign, then four u32 of the magnitude, the most significant first.
runtime::Decimal DecodeNumeric(const Column& column, Bytes stored) {
    runtime::Decimal number{.negative = (stored[0] & kNegative) != 0, .scale = column.scale, .magnitude = {}};
    for (std::size_t i = 0; i < number.magnitude.size(); ++i)
        number.magnitude[i] = LoadU32(stored, 1 + 4 * i);
    return number;
}

}  // namespace

runtime::Variant DecodeValue(const Format& format, const Column& column, Bytes stored) {
    assert(FixedSize(column.type) == 0 || stored.size() == FixedSize(column.type));
    switch (column.type) {
        case ColumnType::kByte:
            return stored[0];
        case ColumnType::kInt16:
            return LoadLittle<std::int16_t>(stored, 0);
        case ColumnType::kInt32:
            return LoadLittle<std::int32_t>(stored, 0);
        case ColumnType::kCurrency:
            return runtime::Currency{LoadLittle<std::int64_t>(stored, 0)};
        case ColumnType::kSingle:
            return std::bit_cast<float>(LoadU32(stored, 0));
        case ColumnType::kDouble:
            return LoadDouble(stored, 0);
        case ColumnType::kDate:
            return runtime::Date{LoadDouble(stored, 0)};
        case ColumnType::kText:
            return DecodeText(format, stored);
        case ColumnType::kGuid:
            return DecodeGuid(stored);
        case ColumnType::kNumeric:
            return DecodeNumeric(column, stored);
        default:
            return runtime::Binary(stored.begin(), stored.end());
    }
}

runtime::Variant DecodeLongValue(const Format& format, const Column& column, Bytes data) {
    if (column.type == ColumnType::kMemo)
        return DecodeText(format, data);
    return runtime::Binary(data.begin(), data.end());
}

}  // namespace ledgix::jet
