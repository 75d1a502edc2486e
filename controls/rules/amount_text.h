#pragma once

#include <string>
#include <string_view>

// The text of a numeric box. It carries a decimal point whatever the locale and no grouping, so that every conversion
// of the run-time reads it; only the screen shows the locale's decimal separator.
namespace ledgix::controls {

// What a numeric box admits. Fewer than 0 decimal places count as 0.
struct AmountLimits {
    int decimal_places = 0;
    bool allow_negative = false;
};

// The text that stays in the box after a change: "" -> "0", "05" -> "5", "0.75" -> ".75" (one zero is dropped, also
// the one before the point), "5-" -> "-5", 12.349 with two decimals -> "12.34" (cut, not rounded). Text that is no
// number becomes the number it starts with, or "0". Blanks, a plus sign, grouping and exponents are written out.
// Texts on the way to a number stay: "5.", and "-" or "." where a zero was dropped before them.
std::string CleanAmount(std::string_view text, const AmountLimits& limits);

// CleanAmount of a text that code assigns. Where the decimal separator is a comma, a single comma is read as one.
std::string CleanAssignedAmount(std::string_view text, char decimal_separator, const AmountLimits& limits);

// The number that the text shows; 0 for a text that is no number or lies beyond a double.
double AmountValue(std::string_view text);

// The text as the screen shows it, and back again: where the decimal separator is a comma, points and commas change
// places.
std::string ExchangeSeparators(std::string_view text, char decimal_separator);

}  // namespace ledgix::controls
