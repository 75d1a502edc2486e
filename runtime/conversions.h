#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "variant.h"

// Conversions between the types of the run-time. Numbers in text carry a decimal point whatever the locale.
namespace ledgix::runtime {

// At most 15 significant digits (7 for a single), the shortest such form, no grouping, "0" before a decimal point.
// Exponent form ("1.25E+15") from 1E+15 on (1E+07 for a single) and below 0.0001. Zero has no sign.
// Error 6 for an infinite value and for one that is no number.
std::string ToText(double value);
std::string ToText(float value);
inline std::string ToText(std::int32_t value) {
    return std::to_string(value);
}

// "True" or "False" for a Boolean, the ISO form for a date, hexadecimal digits for binary data, the usual forms else.
// Error 94 for Null.
std::string ToText(const Variant& value);

// The number that a text starts with, 0 if there is none. Blanks are skipped wherever they stand; E or D starts an
// exponent. Error 6 when the number is beyond a double.
double LeadingNumber(std::string_view text);

// The whole text as a number: blanks around it, one sign before or behind, grouping commas, a decimal point, an
// exponent. Empty when the text is something else. Error 6 when the number is beyond a double.
std::optional<double> ParseNumber(std::string_view text);
// True when the whole text is a number that a double can hold.
bool IsNumeric(std::string_view text);

// Whole numbers take halves to the even neighbour. Errors: 6 beyond the type, 13 a text that is no number or a value
// of a type that has none, 94 Null.
std::int16_t ToInt16(double value);
std::int16_t ToInt16(std::string_view text);
inline std::int16_t ToInt16(const std::string& text) {
    return ToInt16(std::string_view(text));
}
std::int16_t ToInt16(const Variant& value);
std::int32_t ToInt32(double value);
std::int32_t ToInt32(std::string_view text);
inline std::int32_t ToInt32(const std::string& text) {
    return ToInt32(std::string_view(text));
}
std::int32_t ToInt32(const Variant& value);
double ToDouble(const Variant& value);
float ToSingle(const Variant& value);
bool ToBoolean(const Variant& value);
Date ToDate(const Variant& value);

double ToDouble(const Decimal& value);
// All digits of the value, without an exponent.
std::string ToText(const Decimal& value);
std::string ToText(const Currency& value);
// "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}"
std::string ToText(const Guid& value);

}  // namespace ledgix::runtime
