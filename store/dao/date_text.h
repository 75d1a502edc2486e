#pragma once

#include <optional>
#include <string>

#include "variant.h"

// Dates as the engine reads and writes them, whatever the user's region.
namespace ledgix::dao {

// month/day/year or year-month-day, either with a time (hours and minutes, seconds or not, AM or PM or not), or a time
// alone. Two digits of a year stand for 1930 to 2029. Nothing when there is no such date.
std::optional<runtime::Date> ParseDateText(const std::string& text);

// "2/14/2026 8:15:30 PM"; without the time at midnight, without the day on day 0. Error 6 outside the calendar.
std::string GeneralDateText(runtime::Date date);

}  // namespace ledgix::dao
