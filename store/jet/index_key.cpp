#include "index_key.h"

#include <algorithm>
#include <bit>
#include <string>
#include <type_traits>
#include <variant>

#include "text_key.h"

namespace ledgix::jet {

namespace {

constexpr std::uint8_t kNullAscending = 0x00;
constexpr std::uint8_t kNullDescending = 0xFF;
constexpr std::uint8_t kValueAscending = 0x7F;
constexpr std::uint8_t kValueDescending = 0x80;
constexpr std::size_t kSegment = 8;           // of binary data
constexpr std::uint8_t kMoreSegments = 0x09;  // behind a segment that is not the last

template <typename Number>
void AppendBig(Number number, IndexKey& key) {
    const auto bits = static_cast<std::make_unsigned_t<Number>>(number);
    for (int shift = 8 * static_cast<int>(sizeof(Number)) - 8; shift >= 0; shift -= 8)
        key.push_back(static_cast<std::uint8_t>(bits >> shift));
}

template <typename Number>
void AppendSigned(Number number, IndexKey& key) {
    constexpr auto kTopBit = static_cast<std::make_unsigned_t<Number>>(1) << (8 * sizeof(Number) - 1);
    AppendBig(static_cast<std::make_unsigned_t<Number>>(static_cast<std::make_unsigned_t<Number>>(number) ^ kTopBit),
              key);
}

// Bits of a floating number: negative ones inverted, so that the larger of two is the smaller number.
template <typename Unsigned>
void AppendFloating(Unsigned bits, IndexKey& key) {
    constexpr Unsigned kTopBit = Unsigned{1} << (8 * sizeof(Unsigned) - 1);
    AppendBig((bits & kTopBit) != 0 ? static_cast<Unsigned>(~bits) : static_cast<Unsigned>(bits | kTopBit), key);
}

void Invert(IndexKey& key, std::size_t from) {
    std::transform(key.begin() + static_cast<std::ptrdiff_t>(from), key.end(),
                   key.begin() + static_cast<std::ptrdiff_t>(from),
                   [](std::uint8_t byte) { return static_cast<std::uint8_t>(~byte); });
}

// Segments of 8 bytes; the last is filled up and says how many of its bytes count.
void AppendBinary(Bytes data, bool ascending, IndexKey& key) {
    while (!data.empty()) {
        const std::size_t start = key.size();
        const std::size_t size = std::min(data.size(), kSegment);
        key.insert(key.end(), data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size));
        key.resize(start + kSegment);
        data = data.subspan(size);
        if (data.empty())
            key.push_back(static_cast<std::uint8_t>(size));
        if (!ascending)
            Invert(key, start);
        if (!data.empty())
            key.push_back(kMoreSegments);
    }
}

// The sign byte is never inverted; the magnitude is for descending or negative, not for both.
void AppendNumeric(const runtime::Decimal& number, bool ascending, IndexKey& key) {
    const bool zero =
        std::all_of(number.magnitude.begin(), number.magnitude.end(), [](auto word) { return word == 0; });
    const bool negative = number.negative && !zero;
    key.push_back(negative ? 0x00 : 0xFF);
    const std::size_t start = key.size();
    for (const std::uint32_t word : number.magnitude)
        AppendBig(word, key);
    if (negative == ascending)
        Invert(key, start);
}

// Appends the codes that are the same bytes, inverted, for descending order.
struct PlainCode {
    IndexKey& key;

    void operator()(bool value) const { key.push_back(value ? 0x00 : 0xFF); }
    void operator()(std::uint8_t value) const { key.push_back(value); }
    void operator()(std::int16_t value) const { AppendSigned(value, key); }
    void operator()(std::int32_t value) const { AppendSigned(value, key); }
    void operator()(runtime::Currency value) const { AppendSigned(value.ten_thousandths, key); }
    void operator()(float value) const { AppendFloating(std::bit_cast<std::uint32_t>(value), key); }
    void operator()(double value) const { AppendFloating(std::bit_cast<std::uint64_t>(value), key); }
    void operator()(runtime::Date value) const { (*this)(value.days); }
    // Those below and Null have codes of their own.
    template <typename Other>
    void operator()(const Other&) const {}
};

}  // namespace

void AppendKeyColumn(const Format& format, bool ascending, const runtime::Variant& value, IndexKey& key) {
    if (runtime::IsNull(value)) {
        key.push_back(ascending ? kNullAscending : kNullDescending);
        return;
    }
    key.push_back(ascending ? kValueAscending : kValueDescending);
    if (const auto* text = std::get_if<std::string>(&value))
        return format.generation == Generation::kJet3 ? AppendTextKeyJet3(*text, ascending, key)
                                                      : AppendTextKeyJet4(*text, ascending, key);
    if (const auto* data = std::get_if<runtime::Binary>(&value))
        return AppendBinary(*data, ascending, key);
    if (const auto* guid = std::get_if<runtime::Guid>(&value))
        return AppendBinary(guid->bytes, ascending, key);
    if (const auto* number = std::get_if<runtime::Decimal>(&value))
        return AppendNumeric(*number, ascending, key);
    const std::size_t start = key.size();
    std::visit(PlainCode{key}, value);
    if (!ascending)
        Invert(key, start);
}

IndexKey MakeIndexKey(const Format& format, const Index& index, const std::vector<runtime::Variant>& values) {
    IndexKey key;
    for (std::size_t i = 0; i < values.size() && i < index.columns.size(); ++i) {
        AppendKeyColumn(format, index.columns[i].ascending, values[i], key);
    }
    return key;
}

}  // namespace ledgix::jet
