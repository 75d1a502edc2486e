#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "variant.h"

// Numbers with a set number of digits behind the point, made without going through a double. The text is a number as
// runtime::ToText and runtime::ParseNumber know it; digits beyond the scale are rounded, halves to the even neighbour.
namespace ledgix::dao {

// Nothing when the text is no number, or one of more than `precision` digits.
std::optional<runtime::Decimal> ParseDecimal(std::string_view number, std::uint8_t precision, std::uint8_t scale);

// Nothing when the text is no number, or one that is beyond the type.
std::optional<runtime::Currency> ParseCurrency(std::string_view number);

}  // namespace ledgix::dao
