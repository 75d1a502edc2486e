#pragma once

#include <string_view>

// Measures of the report typeface, so that a layout needs no font and is the same on every system.
namespace ledgix::zq {

// How far the letters reach above and below the baseline, in parts of the size.
inline constexpr double kAscent = 0.905;
inline constexpr double kDescent = 0.212;

// The advance width of a character, in parts of the size. Characters outside the table get a likely width.
double AdvanceWidth(char32_t code_point, bool bold);

// Points, at a size in points. No kerning.
double TextWidth(std::string_view text, double size, bool bold);

}  // namespace ledgix::zq
