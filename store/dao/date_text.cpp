#include "date_text.h"

#include <cstdio>

#include "date_time.h"
#include "regional_settings.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::dao {

namespace {

// Blanks, or h:mm[:ss] with AM or PM behind. False when the text is something else.
bool ParseTime(const std::string& text, bool needed, runtime::CivilTime& time) {
    if (text.find_first_not_of(' ') == std::string::npos)
        return !needed;
    int used = 0;
    if (std::sscanf(text.c_str(), " %2d:%2d%n", &time.hour, &time.minute, &used) != 2)
        return false;
    int more = 0;
    if (std::sscanf(text.c_str() + used, ":%2d%n", &time.second, &more) == 1)
        used += more;
    std::string half = runtime::FoldCase(text.substr(static_cast<std::size_t>(used)));
    std::erase(half, ' ');
    if (half.empty())
        return true;
    if ((half != "am" && half != "pm") || time.hour < 1 || time.hour > 12)
        return false;
    time.hour = time.hour % 12 + (half == "pm" ? 12 : 0);
    return true;
}

std::string TimeText(runtime::CivilTime time) {
    const bool afternoon = time.hour >= 12;
    time.hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return runtime::FormatDate(time, "h:nn:ss ", runtime::UnitedStates().month_abbreviations) +
           (afternoon ? "PM" : "AM");
}

}  // namespace

std::optional<runtime::Date> ParseDateText(const std::string& text) {
    if (const std::optional<runtime::Date> iso = runtime::ParseIso8601(text))
        return iso;
    runtime::CivilTime time;
    int used = 0;
    if (std::sscanf(text.c_str(), " %2d/%2d/%4d%n", &time.month, &time.day, &time.year, &used) != 3) {
        time = {};
        used = 0;
    }
    if (used > 0 && time.year < 100)
        time.year += time.year < 30 ? 2000 : 1900;
    if (!ParseTime(text.substr(static_cast<std::size_t>(used)), used == 0, time))
        return std::nullopt;
    try {
        return runtime::ToDate(time);
    } catch (const runtime::RuntimeError&) {
        return std::nullopt;
    }
}

std::string GeneralDateText(runtime::Date date) {
    const runtime::CivilTime time = runtime::ToCivilTime(date);
    const runtime::CivilTime zero;
    if (time.year == zero.year && time.month == zero.month && time.day == zero.day)
        return TimeText(time);
    const std::string day = runtime::FormatDate(time, "m/d/yyyy", runtime::UnitedStates().month_abbreviations);
    const bool midnight = time.hour == 0 && time.minute == 0 && time.second == 0;
    return midnight ? day : day + " " + TimeText(time);
}

}  // namespace ledgix::dao
