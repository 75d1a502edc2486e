#include "value_codec.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <string>
#include <variant>

#include "byte_order.h"
#include "runtime_error.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

constexpr std::uint8_t kNegative = 0x80;

// Stored as u32, u16, u16 little-endian and 8 bytes.
constexpr std::array<std::size_t, 16> kStoredAt{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

runtime::Guid DecodeGuid(Bytes stored) {
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

void EncodeGuid(const runtime::Guid& guid, ByteList& stored) {
    stored.resize(guid.bytes.size());
    for (std::size_t i = 0; i < kStoredAt.size(); ++i)
        stored[kStoredAt[i]] = guid.bytes[i];
}

void EncodeNumeric(const runtime::Decimal& number, ByteList& stored) {
    stored.resize(FixedSize(ColumnType::kNumeric));
    stored[0] = number.negative ? kNegative : 0;
    for (std::size_t i = 0; i < number.magnitude.size(); ++i)
        StoreLittle(stored, 1 + 4 * i, number.magnitude[i]);
}

template <typename Number>
void EncodeLittle(Number number, ByteList& stored) {
    stored.resize(sizeof number);
    StoreLittle(stored, 0, number);
}

// The value as the type that the column stores.
template <typename Value>
const Value& Expect(const Column& column, const runtime::Variant& value) {
    const Value* expected = std::get_if<Value>(&value);
    if (expected == nullptr)
        RaiseConversion(column);
    return *expected;
}

[[noreturn]] void RaiseTooLong(const Column& column) {
    runtime::RaiseEngineError(
        runtime::ErrorNumber::kFieldTooSmall,
        "The field '" + column.name + "' is too small to accept the amount of data you attempted to add.");
}

// The limit counts characters, however they are stored; a text has at least as many bytes here as characters.
void EncodeTextColumn(const Format& format, const Column& column, const std::string& text, ByteList& stored) {
    if (text.size() * format.character_size > column.length && EncodeName(format, text).size() > column.length)
        RaiseTooLong(column);
    stored = EncodeText(format, text, column.compressed);
}

void EncodeBinary(const Column& column, const runtime::Binary& data, ByteList& stored) {
    if (column.type == ColumnType::kBinary && data.size() > column.length)
        RaiseTooLong(column);
    stored = data;
}

}  // namespace

void RaiseConversion(const Column& column) {
    runtime::RaiseEngineError(runtime::ErrorNumber::kTypeConversion,
                              "Data type conversion error: the value is none of column '" + column.name + "'.");
}

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

void EncodeValue(const Format& format, const Column& column, const runtime::Variant& value, ByteList& stored) {
    switch (column.type) {
        case ColumnType::kByte:
            return EncodeLittle(Expect<std::uint8_t>(column, value), stored);
        case ColumnType::kInt16:
            return EncodeLittle(Expect<std::int16_t>(column, value), stored);
        case ColumnType::kInt32:
            return EncodeLittle(Expect<std::int32_t>(column, value), stored);
        case ColumnType::kCurrency:
            return EncodeLittle(Expect<runtime::Currency>(column, value).ten_thousandths, stored);
        case ColumnType::kSingle:
            return EncodeLittle(std::bit_cast<std::uint32_t>(Expect<float>(column, value)), stored);
        case ColumnType::kDouble:
            return EncodeLittle(std::bit_cast<std::uint64_t>(Expect<double>(column, value)), stored);
        case ColumnType::kDate:
            return EncodeLittle(std::bit_cast<std::uint64_t>(Expect<runtime::Date>(column, value).days), stored);
        case ColumnType::kText:
            return EncodeTextColumn(format, column, Expect<std::string>(column, value), stored);
        case ColumnType::kGuid:
            return EncodeGuid(Expect<runtime::Guid>(column, value), stored);
        case ColumnType::kNumeric:
            if (Expect<runtime::Decimal>(column, value).scale != column.scale)
                RaiseConversion(column);
            return EncodeNumeric(std::get<runtime::Decimal>(value), stored);
        default:
            return EncodeBinary(column, Expect<runtime::Binary>(column, value), stored);
    }
}

runtime::Variant DecodeLongValue(const Format& format, const Column& column, Bytes data) {
    if (column.type == ColumnType::kMemo)
        return DecodeText(format, data);
    return runtime::Binary(data.begin(), data.end());
}

}  // namespace ledgix::jet
