#pragma once

#include <array>
#include <string>
#include <string_view>

namespace ledgix::controls {

enum class Period { kWeek, kMonth, kYear };

// One amount per week, per month and per year, as the texts of three boxes for whole positive numbers. A year has
// exactly 52 weeks and 12 months. Week and month reach each other through the yearly amount, and each is cut, never
// rounded: 100 a week is 5200 a year and 433 a month; 1000 a year is 83 a month and 19 a week.
class PeriodAmounts {
public:
    // Cleans the text as the box does and computes the other two. Error 6 when one of them is beyond a double; all
    // three then stay as they were.
    void Enter(Period period, std::string_view text);

    const std::string& Text(Period period) const { return texts_[static_cast<std::size_t>(period)]; }

private:
    std::array<std::string, 3> texts_{"0", "0", "0"};
};

}  // namespace ledgix::controls
