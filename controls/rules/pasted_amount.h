#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "regional_settings.h"

namespace ledgix::controls {

// '.' or ',': what divides whole dollars from cents in a region's amounts.
char DecimalSeparator(const runtime::RegionalSettings& region);

// The amount that a pasted, dropped or composed text means to a user of the region, as "-1234.50"; empty where the
// text is no amount, or could be two different ones.
//   grouping    points, commas, blanks or apostrophes between threes: "1,234.50", "1.234,50", "1 234,50", "1'234.50"
//   one comma   or one point, alone: the decimal separator if it is the region's, else grouping if three digits follow
//               it; so "1,234" is 1234 where the decimal separator is a point, and "12,34" is nothing there
//   currency    before or behind: the region's own, a currency sign ("$", "US$"), a code of three capitals ("EUR")
//   negative    a minus before or behind; parentheses
std::optional<std::string> ReadAmount(std::string_view text, const runtime::RegionalSettings& region);

}  // namespace ledgix::controls
