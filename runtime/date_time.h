#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "variant.h"

namespace ledgix::runtime {

// A moment on the calendar and the wall clock, in no time zone.
struct CivilTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const CivilTime&) const = default;
};

// The nearest second. Error 6 outside the years 100 to 9999.
CivilTime ToCivilTime(Date date);

// Error 13 when there is no such day or time.
Date ToDate(const CivilTime& time);

// "2026-02-14T20:15:30". A value outside the calendar gives its plain number.
std::string ToIso8601(Date date);
// A date, or a date and a time behind "T" or a blank. Empty when the text is something else.
std::optional<Date> ParseIso8601(std::string_view text);

using MonthNames = std::array<std::string, 12>;

// Letters of `pattern` in either case: d, dd, m, mm, mmm, yy, yyyy, h, hh, nn, ss; other characters stand for
// themselves.
std::string FormatDate(const CivilTime& time, std::string_view pattern, const MonthNames& month_abbreviations);

}  // namespace ledgix::runtime
