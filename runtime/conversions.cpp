#include "conversions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <type_traits>

#include "date_time.h"
#include "rounding.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::runtime {

namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;
constexpr int kSmallestPlainExponent = -4;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool IsExponentMark(char c) {
    return c == 'e' || c == 'E' || c == 'd' || c == 'D';
}
bool IsSign(char c) {
    return c == '+' || c == '-';
}

// `digits` significant digits without trailing zeros, and the power of ten of the first.
struct DecimalForm {
    std::string digits;
    int exponent = 0;
};

DecimalForm ToDecimalForm(double magnitude, int digits) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, digits - 1)
                         .ptr;
    const std::string_view written(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = written.find('e');
    DecimalForm form;
    for (const char c : written.substr(0, mark))
        if (IsDigit(c))
            form.digits.push_back(c);
    form.digits.erase(form.digits.find_last_not_of('0') + 1);
    const std::size_t exponent_at = mark + (written[mark + 1] == '+' ? 2 : 1);
    std::from_chars(written.data() + exponent_at, end, form.exponent);
    return form;
}

std::string ExponentText(const DecimalForm& form) {
    std::string text = form.digits.substr(0, 1);
    if (form.digits.size() > 1)
        text += "." + form.digits.substr(1);
    const std::string power = std::to_string(std::abs(form.exponent));
    return text + (form.exponent < 0 ? "E-" : "E+") + (power.size() < 2 ? "0" : "") + power;
}

std::string PlainText(const DecimalForm& form) {
    if (form.exponent < 0)
        return "0." + std::string(static_cast<std::size_t>(-form.exponent - 1), '0') + form.digits;
    const auto whole = static_cast<std::size_t>(form.exponent) + 1;
    if (form.digits.size() <= whole)
        return form.digits + std::string(whole - form.digits.size(), '0');
    return form.digits.substr(0, whole) + "." + form.digits.substr(whole);
}

std::string NumberText(double value, int digits) {
    if (CheckOverflow(value) == 0.0)
        return "0";
    const DecimalForm form = ToDecimalForm(std::abs(value), digits);
    const bool plain = form.exponent >= kSmallestPlainExponent && form.exponent < digits;
    return (value < 0 ? "-" : "") + (plain ? PlainText(form) : ExponentText(form));
}

// The digits, point and exponent of a number as std::from_chars wants them.
double EvaluateNumber(const std::string& text) {
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // The standard does not tell which end of the range was left; a stream gives the largest number or about 0.
        std::istringstream in(text);
        in.imbue(std::locale::classic());
        in >> value;
        if (value > 1)
            RaiseError(ErrorNumber::kOverflow);
    }
    return value;
}

// Splits an unsigned number off the front of a text. `text` keeps what follows.
std::string TakeNumber(std::string_view& text, bool grouping) {
    std::string number;
    bool any_digit = false;
    bool point = false;
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (IsDigit(c))
            any_digit = true;
        else if (c == '.' && !point)
            point = true;
        else if (c == ',' && grouping && any_digit && !point)
            continue;
        else
            break;
        number.push_back(c);
    }
    if (!any_digit)
        return {};
    if (at < text.size() && IsExponentMark(text[at])) {
        std::size_t digits = at + 1;
        if (digits < text.size() && IsSign(text[digits]))
            ++digits;
        const std::size_t first = digits;
        while (digits < text.size() && IsDigit(text[digits]))
            ++digits;
        if (digits > first) {
            number.push_back('e');
            if (text[at + 1] == '-')
                number.push_back('-');
            number.append(text.substr(first, digits - first));
            at = digits;
        }
    }
    text.remove_prefix(at);
    if (number.front() == '.')
        number.insert(0, 1, '0');
    return number;
}

template <class Integer>
Integer ToInteger(double value) {
    const double rounded = Round(value, 0);
    const bool fits = rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
                      rounded <= static_cast<double>(std::numeric_limits<Integer>::max());
    if (!fits)
        RaiseError(ErrorNumber::kOverflow);
    return static_cast<Integer>(rounded);
}

double ParseOrMismatch(std::string_view text) {
    const std::optional<double> number = ParseNumber(text);
    if (!number)
        RaiseError(ErrorNumber::kTypeMismatch);
    return *number;
}

std::string HexText(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text.push_back(kDigits[bytes[i] >> 4]);
        text.push_back(kDigits[bytes[i] & 15]);
    }
    return text;
}

// Unsigned digits with the decimal point `scale` places from the right; zeros at the end go.
std::string PlacePoint(std::string digits, std::size_t scale) {
    if (digits.size() <= scale)
        digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale == 0)
        return digits;
    digits.insert(digits.size() - scale, 1, '.');
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.')
        digits.pop_back();
    return digits;
}

// Divides the magnitude by ten and gives the remainder.
std::uint32_t TakeLowestDigit(std::array<std::uint32_t, 4>& magnitude) {
    std::uint64_t remainder = 0;
    for (std::uint32_t& word : magnitude) {
        const std::uint64_t part = (remainder << 32) | word;
        word = static_cast<std::uint32_t>(part / 10);
        remainder = part % 10;
    }
    return static_cast<std::uint32_t>(remainder);
}

}  // namespace

std::string ToText(double value) {
    return NumberText(value, kDoubleDigits);
}

std::string ToText(float value) {
    return NumberText(static_cast<double>(value), kSingleDigits);
}

std::string ToText(const Decimal& value) {
    std::string digits;
    std::array<std::uint32_t, 4> rest = value.magnitude;
    while (std::any_of(rest.begin(), rest.end(), [](std::uint32_t word) { return word != 0; }))
        digits.insert(digits.begin(), static_cast<char>('0' + TakeLowestDigit(rest)));
    if (digits.empty())
        return "0";
    return (value.negative ? "-" : "") + PlacePoint(digits, value.scale);
}

std::string ToText(const Currency& value) {
    const std::string digits = std::to_string(value.ten_thousandths);
    const bool negative = digits.front() == '-';
    return (negative ? "-" : "") + PlacePoint(digits.substr(negative ? 1 : 0), 4);
}

std::string ToText(const Guid& value) {
    std::string text = HexText(value.bytes.data(), value.bytes.size());
    for (const std::size_t at : {20U, 16U, 12U, 8U})
        text.insert(at, 1, '-');
    return "{" + text + "}";
}

std::string ToText(const Variant& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Null>)
                RaiseError(ErrorNumber::kInvalidNull);
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? "True" : "False";
            else if constexpr (std::is_same_v<Held, std::string>)
                return held;
            else if constexpr (std::is_same_v<Held, Date>)
                return ToIso8601(held);
            else if constexpr (std::is_same_v<Held, Binary>)
                return HexText(held.data(), held.size());
            else if constexpr (std::is_integral_v<Held>)
                return std::to_string(held);
            else
                return ToText(held);
        },
        value);
}

double LeadingNumber(std::string_view text) {
    std::string packed;
    std::copy_if(text.begin(), text.end(), std::back_inserter(packed), [](char c) { return !IsBlank(c); });
    std::string_view rest = packed;
    const bool negative = !rest.empty() && rest.front() == '-';
    if (!rest.empty() && IsSign(rest.front()))
        rest.remove_prefix(1);
    const std::string number = TakeNumber(rest, false);
    if (number.empty())
        return 0;
    return negative ? -EvaluateNumber(number) + 0.0 : EvaluateNumber(number);
}

std::optional<double> ParseNumber(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    char sign = '\0';
    if (!text.empty() && IsSign(text.front())) {
        sign = text.front();
        text.remove_prefix(1);
    }
    const std::string number = TakeNumber(text, true);
    if (sign == '\0' && text.size() == 1 && IsSign(text.front())) {
        sign = text.front();
        text.remove_prefix(1);
    }
    if (number.empty() || !text.empty())
        return std::nullopt;
    return sign == '-' ? -EvaluateNumber(number) + 0.0 : EvaluateNumber(number);
}

bool IsNumeric(std::string_view text) {
    try {
        return ParseNumber(text).has_value();
    } catch (const RuntimeError&) {
        return false;
    }
}

std::int16_t ToInt16(double value) {
    return ToInteger<std::int16_t>(value);
}
std::int16_t ToInt16(std::string_view text) {
    return ToInt16(ParseOrMismatch(text));
}
std::int16_t ToInt16(const Variant& value) {
    return ToInt16(ToDouble(value));
}

std::int32_t ToInt32(double value) {
    return ToInteger<std::int32_t>(value);
}
std::int32_t ToInt32(std::string_view text) {
    return ToInt32(ParseOrMismatch(text));
}
std::int32_t ToInt32(const Variant& value) {
    return ToInt32(ToDouble(value));
}

double ToDouble(const Decimal& value) {
    return EvaluateNumber(ToText(Decimal{false, value.scale, value.magnitude})) * (value.negative ? -1 : 1);
}

double ToDouble(const Variant& value) {
    return std::visit(
        [](const auto& held) -> double {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Null>)
                RaiseError(ErrorNumber::kInvalidNull);
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? -1 : 0;
            else if constexpr (std::is_same_v<Held, std::string>)
                return ParseOrMismatch(held);
            else if constexpr (std::is_same_v<Held, Currency>)
                return static_cast<double>(held.ten_thousandths) / 10000;
            else if constexpr (std::is_same_v<Held, Date>)
                return held.days;
            else if constexpr (std::is_same_v<Held, Decimal>)
                return ToDouble(held);
            else if constexpr (std::is_arithmetic_v<Held>)
                return static_cast<double>(held);
            else
                RaiseError(ErrorNumber::kTypeMismatch);
        },
        value);
}

float ToSingle(const Variant& value) {
    const double wide = ToDouble(value);
    const auto narrow = static_cast<float>(wide);
    if (std::isinf(narrow) && !std::isinf(wide))
        RaiseError(ErrorNumber::kOverflow);
    return narrow;
}

bool ToBoolean(const Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (EqualsIgnoringCase(*text, "True"))
            return true;
        if (EqualsIgnoringCase(*text, "False"))
            return false;
    }
    return ToDouble(value) != 0.0;
}

Date ToDate(const Variant& value) {
    if (const auto* date = std::get_if<Date>(&value))
        return *date;
    const Date date{ToDouble(value)};
    ToCivilTime(date);
    return date;
}

}  // namespace ledgix::runtime
