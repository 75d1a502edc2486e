#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ledgix::editors {

// What takes the place of a text in the field of the mortgage rate or term; nothing when the text may stay.

// Percent a year: "100" for more than that.
std::optional<std::string> LimitedMortgageRate(std::string_view text);

// Years: "50" for more than that, "20" for 0 and less.
std::optional<std::string> LimitedMortgageTerm(std::string_view text);

}  // namespace ledgix::editors
