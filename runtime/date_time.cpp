#include "date_time.h"

#include <chrono>
#include <cmath>

#include "conversions.h"
#include "runtime_error.h"

namespace ledgix::runtime {

namespace {

constexpr std::chrono::sys_days kDayZero = std::chrono::year{1899} / std::chrono::December / 30;
constexpr double kFirstDay = -657434;     // 1 January 100
constexpr double kPastLastDay = 2958466;  // 1 January 10000
constexpr int kSecondsPerDay = 86400;

std::string Padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string DatePart(const CivilTime& time, char letter, std::size_t count, const MonthNames& months) {
    switch (letter) {
        case 'd':
            return Padded(time.day, count);
        case 'm':
            return count >= 3 ? months.at(static_cast<std::size_t>(time.month - 1)) : Padded(time.month, count);
        case 'y':
            return count >= 3 ? Padded(time.year, 4) : Padded(time.year % 100, 2);
        case 'h':
            return Padded(time.hour, count);
        case 'n':
            return Padded(time.minute, count);
        case 's':
            return Padded(time.second, count);
        default:
            return std::string(count, letter);
    }
}

struct DayAndSeconds {
    double day = 0;
    int seconds = 0;
};

// The day and the nearest second of it; the last half second belongs to the day that follows.
DayAndSeconds SplitDate(Date date) {
    const double day = std::trunc(date.days);
    const auto seconds = static_cast<int>(std::lround(std::abs(date.days - day) * kSecondsPerDay));
    return seconds == kSecondsPerDay ? DayAndSeconds{day + 1, 0} : DayAndSeconds{day, seconds};
}

bool InCalendar(Date date) {
    if (!(date.days > kFirstDay - 1 && date.days < kPastLastDay))
        return false;
    return SplitDate(date).day < kPastLastDay;
}

// Takes `least` to `most` digits off the front of a text.
std::optional<int> TakeDigits(std::string_view& text, std::size_t least, std::size_t most) {
    int number = 0;
    std::size_t count = 0;
    for (; count < most && count < text.size() && text[count] >= '0' && text[count] <= '9'; ++count)
        number = number * 10 + (text[count] - '0');
    if (count < least)
        return std::nullopt;
    text.remove_prefix(count);
    return number;
}

bool Take(std::string_view& text, std::string_view any_of) {
    if (text.empty() || any_of.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

// Three numbers with `separator` between them; the second and the third have one or two digits.
std::optional<std::array<int, 3>> TakeThree(std::string_view& text, std::string_view separator, std::size_t first_least,
                                            std::size_t first_most) {
    const std::optional<int> first = TakeDigits(text, first_least, first_most);
    if (!first || !Take(text, separator))
        return std::nullopt;
    const std::optional<int> second = TakeDigits(text, 1, 2);
    if (!second || !Take(text, separator))
        return std::nullopt;
    const std::optional<int> third = TakeDigits(text, 1, 2);
    if (!third)
        return std::nullopt;
    return std::array<int, 3>{*first, *second, *third};
}

}  // namespace

CivilTime ToCivilTime(Date date) {
    if (!InCalendar(date))
        RaiseError(ErrorNumber::kOverflow);
    const auto [day, seconds] = SplitDate(date);
    const std::chrono::year_month_day calendar{kDayZero + std::chrono::days{static_cast<int>(day)}};
    return {static_cast<int>(calendar.year()),
            static_cast<int>(static_cast<unsigned>(calendar.month())),
            static_cast<int>(static_cast<unsigned>(calendar.day())),
            seconds / 3600,
            seconds / 60 % 60,
            seconds % 60};
}

Date ToDate(const CivilTime& time) {
    const bool in_range =
        time.year >= 100 && time.year <= 9999 && time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31;
    if (!in_range)
        RaiseError(ErrorNumber::kTypeMismatch);
    const std::chrono::year_month_day calendar{std::chrono::year{time.year},
                                               std::chrono::month{static_cast<unsigned>(time.month)},
                                               std::chrono::day{static_cast<unsigned>(time.day)}};
    const bool clock_ok = time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
                          time.second >= 0 && time.second < 60;
    if (!calendar.ok() || !clock_ok)
        RaiseError(ErrorNumber::kTypeMismatch);
    const auto day = static_cast<double>((std::chrono::sys_days{calendar} - kDayZero).count());
    const double fraction = (time.hour * 3600 + time.minute * 60 + time.second) / double{kSecondsPerDay};
    return {day < 0 ? day - fraction : day + fraction};
}

std::string ToIso8601(Date date) {
    if (!InCalendar(date))
        return ToText(date.days);
    const CivilTime time = ToCivilTime(date);
    return Padded(time.year, 4) + "-" + Padded(time.month, 2) + "-" + Padded(time.day, 2) + "T" + Padded(time.hour, 2) +
           ":" + Padded(time.minute, 2) + ":" + Padded(time.second, 2);
}

std::optional<Date> ParseIso8601(std::string_view text) {
    const auto date = TakeThree(text, "-", 4, 4);
    if (!date)
        return std::nullopt;
    std::array<int, 3> clock{};
    if (Take(text, "T ")) {
        const auto taken = TakeThree(text, ":", 1, 2);
        if (!taken)
            return std::nullopt;
        clock = *taken;
    }
    if (!text.empty())
        return std::nullopt;
    const CivilTime time{(*date)[0], (*date)[1], (*date)[2], clock[0], clock[1], clock[2]};
    try {
        return ToDate(time);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::string FormatDate(const CivilTime& time, std::string_view pattern, const MonthNames& month_abbreviations) {
    std::string out;
    for (std::size_t at = 0; at < pattern.size();) {
        const char letter = Lower(pattern[at]);
        std::size_t count = 1;
        while (at + count < pattern.size() && Lower(pattern[at + count]) == letter)
            ++count;
        const bool is_part = std::string_view("dmyhns").find(letter) != std::string_view::npos;
        out += is_part ? DatePart(time, letter, count, month_abbreviations) : std::string(pattern.substr(at, count));
        at += count;
    }
    return out;
}

}  // namespace ledgix::runtime
