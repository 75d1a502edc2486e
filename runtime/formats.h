#pragma once

#include <string>

#include "regional_settings.h"

// Error 6 for an infinite value and for one that is no number.
namespace ledgix::runtime {

// The format "0.00": two decimals, a point, no grouping. Rounds as Round does; never "-0.00".
std::string FormatTwoDecimals(double value);

// The named format "currency": symbol, grouping and two decimals as the region writes them.
std::string FormatCurrency(double value, const RegionalSettings& region);

}  // namespace ledgix::runtime
