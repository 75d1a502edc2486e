#include "date_text.h"

#include <gtest/gtest.h>

#include "date_time.h"

namespace ledgix::dao {
namespace {

runtime::Date Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return runtime::ToDate(runtime::CivilTime{year, month, day, hour, minute, second});
}

TEST(DateText, WritesMonthDayYearAndTheTimeOfTwelveHours) {
    EXPECT_EQ(GeneralDateText(Moment(2026, 2, 14, 20, 15, 30)), "2/14/2026 8:15:30 PM");
    EXPECT_EQ(GeneralDateText(Moment(2026, 12, 1, 0, 5, 9)), "12/1/2026 12:05:09 AM");
    EXPECT_EQ(GeneralDateText(Moment(2026, 12, 1, 12, 0, 0)), "12/1/2026 12:00:00 PM");
}

TEST(DateText, LeavesMidnightOut) {
    EXPECT_EQ(GeneralDateText(Moment(1900, 1, 1)), "1/1/1900");
}

TEST(DateText, LeavesDayZeroOut) {
    EXPECT_EQ(GeneralDateText({0.25}), "6:00:00 AM");
    EXPECT_EQ(GeneralDateText({0}), "12:00:00 AM");
}

TEST(DateText, ReadsWhatItWrites) {
    for (const runtime::Date date : {Moment(2026, 2, 14, 20, 15, 30), Moment(1900, 1, 1), Moment(100, 1, 1, 0, 0, 1),
                                     Moment(9999, 12, 31, 23, 59, 59), runtime::Date{0.25}, runtime::Date{0}})
        EXPECT_EQ(ParseDateText(GeneralDateText(date)), date);
}

TEST(DateText, RefusesWhatIsNoDate) {
    for (const char* text : {"", " ", "tomorrow", "2/30/2026", "13/1/2026", "1/1/2026 25:00", "1/1/2026 x", "45000"})
        EXPECT_FALSE(ParseDateText(text).has_value()) << text;
}

}  // namespace
}  // namespace ledgix::dao
