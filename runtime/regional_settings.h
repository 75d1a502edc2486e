#pragma once

#include <string>
#include <vector>

#include "date_time.h"

namespace ledgix::runtime {

enum class Paper { kA4, kLetter };

// How the user's region writes amounts and dates, and what paper it prints on.
struct RegionalSettings {
    // Where the minus sign of a negative amount stands.
    enum class Minus { kParentheses, kBeforeAll, kAfterAll, kBeforeSymbol, kAfterSymbol };

    std::string currency_symbol;
    bool symbol_first = true;
    bool space_between = false;
    Minus minus = Minus::kBeforeAll;
    std::string decimal_separator;
    std::string group_separator;
    std::vector<int> group_sizes;  // from the decimal separator leftwards; the last one repeats
    std::string short_date;        // a pattern of FormatDate
    MonthNames month_abbreviations;
    Paper paper = Paper::kA4;
};

// English (United States); also what holds in the C locale.
const RegionalSettings& UnitedStates();

// The settings of the user's environment, read from the platform.
RegionalSettings ReadUserSettings();

// The settings in force: the user's, read once on first use, unless others were installed.
const RegionalSettings& Region();
// Copies `settings`; for tests.
void InstallRegion(const RegionalSettings& settings);

}  // namespace ledgix::runtime
