#include "field_conversion.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "conversions.h"
#include "date_text.h"
#include "fixed_point.h"
#include "rounding.h"
#include "runtime_error.h"
#include "table_definition.h"
#include "text.h"
#include "value_codec.h"

namespace ledgix::dao {

namespace {

using runtime::Variant;

// The years 100 to 9999. On days before day 0, too, the fraction is the time of the day.
constexpr double kFirstDay = -657434;
constexpr double kLastDay = 2958465;

[[noreturn]] void RaiseTooSmall() {
    runtime::RaiseEngineError(runtime::ErrorNumber::kFieldTooSmall,
                              "The field is too small to accept the amount of data you attempted to add. Try "
                              "inserting or pasting less data.");
}

template <class Value>
Value Expect(const std::optional<Value>& value, const jet::Column& column) {
    if (!value)
        jet::RaiseConversion(column);
    return *value;
}

double NumberOf(const Variant& value, const jet::Column& column) {
    const double number = runtime::ToDouble(value);
    if (!std::isfinite(number))
        jet::RaiseConversion(column);
    return number;
}

template <class Integer>
Variant Whole(const Variant& value, const jet::Column& column) {
    const double rounded = runtime::Round(NumberOf(value, column), 0);
    if (rounded < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<Integer>::max()))
        jet::RaiseConversion(column);
    return static_cast<Integer>(rounded);
}

Variant Single(const Variant& value, const jet::Column& column) {
    const auto number = static_cast<float>(NumberOf(value, column));
    if (!std::isfinite(number))
        jet::RaiseConversion(column);
    return number;
}

bool Truth(const Variant& value, const jet::Column& column) {
    const auto* text = std::get_if<std::string>(&value);
    return text ? runtime::ToBoolean(*text) : NumberOf(value, column) != 0.0;
}

Variant DateValue(const Variant& value, const jet::Column& column) {
    const auto* text = std::get_if<std::string>(&value);
    const double days = text ? Expect(ParseDateText(*text), column).days : NumberOf(value, column);
    if (days <= kFirstDay - 1 || days >= kLastDay + 1)
        jet::RaiseConversion(column);
    return runtime::Date{days};
}

std::string TextOf(const Variant& value) {
    const auto* date = std::get_if<runtime::Date>(&value);
    return date ? GeneralDateText(*date) : runtime::ToText(value);
}

Variant Text(const Variant& value, const jet::Column& column) {
    std::string text = TextOf(value);
    // No character takes less than a byte.
    if (text.size() > column.Characters()) {
        const bool counts_code_units = column.character_size > 1;
        const std::size_t length = counts_code_units ? runtime::ToUtf16(text).size() : runtime::ToUtf32(text).size();
        if (length > column.Characters())
            RaiseTooSmall();
    }
    return text;
}

// A number as decimal text. Error 13 for a value that is none.
std::string NumberText(const Variant& value, const jet::Column& column) {
    if (std::holds_alternative<runtime::Decimal>(value) || std::holds_alternative<runtime::Currency>(value) ||
        std::holds_alternative<std::string>(value))
        return runtime::ToText(value);
    return runtime::ToText(NumberOf(value, column));
}

Variant BinaryValue(const Variant& value, const jet::Column& column) {
    const auto* bytes = std::get_if<runtime::Binary>(&value);
    if (!bytes)
        jet::RaiseConversion(column);
    if (column.type == jet::ColumnType::kBinary && bytes->size() > column.length)
        RaiseTooSmall();
    return *bytes;
}

std::optional<int> HexDigit(char c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const std::size_t digit = kDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c);
    return digit == std::string_view::npos ? std::nullopt : std::optional(static_cast<int>(digit));
}

// "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}", with the braces or without.
std::optional<runtime::Guid> ParseGuid(std::string_view text) {
    if (text.starts_with('{') && text.ends_with('}'))
        text = text.substr(1, text.size() - 2);
    if (text.size() != 36)
        return std::nullopt;
    runtime::Guid guid;
    std::size_t digits = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (at == 8 || at == 13 || at == 18 || at == 23) {
            if (text[at] != '-')
                return std::nullopt;
            continue;
        }
        const std::optional<int> digit = HexDigit(text[at]);
        if (!digit)
            return std::nullopt;
        std::uint8_t& byte = guid.bytes[digits++ / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | *digit);
    }
    return guid;
}

Variant GuidValue(const Variant& value, const jet::Column& column) {
    if (std::holds_alternative<runtime::Guid>(value))
        return value;
    const auto* text = std::get_if<std::string>(&value);
    return Expect(text ? ParseGuid(*text) : std::nullopt, column);
}

// Values that have no number, or one beyond a type, raise the run-time's errors 6 and 13.
Variant Convert(const Variant& value, const jet::Column& column) {
    switch (column.type) {
        case jet::ColumnType::kBoolean:
            return Truth(value, column);
        case jet::ColumnType::kByte:
            return Whole<std::uint8_t>(value, column);
        case jet::ColumnType::kInt16:
            return Whole<std::int16_t>(value, column);
        case jet::ColumnType::kInt32:
            return Whole<std::int32_t>(value, column);
        case jet::ColumnType::kCurrency:
            return Expect(ParseCurrency(NumberText(value, column)), column);
        case jet::ColumnType::kSingle:
            return Single(value, column);
        case jet::ColumnType::kDouble:
            return NumberOf(value, column);
        case jet::ColumnType::kDate:
            return DateValue(value, column);
        case jet::ColumnType::kText:
            return Text(value, column);
        case jet::ColumnType::kMemo:
            return TextOf(value);
        case jet::ColumnType::kGuid:
            return GuidValue(value, column);
        case jet::ColumnType::kNumeric:
            return Expect(ParseDecimal(NumberText(value, column), column.precision, column.scale), column);
        default:
            return BinaryValue(value, column);
    }
}

}  // namespace

Variant ConvertToColumn(const Variant& value, const jet::Column& column) {
    if (runtime::IsNull(value))
        return column.type == jet::ColumnType::kBoolean ? Variant(false) : value;
    try {
        return Convert(value, column);
    } catch (const runtime::RuntimeError& error) {
        if (error.Is(runtime::ErrorNumber::kOverflow) || error.Is(runtime::ErrorNumber::kTypeMismatch))
            jet::RaiseConversion(column);
        throw;
    }
}

}  // namespace ledgix::dao
