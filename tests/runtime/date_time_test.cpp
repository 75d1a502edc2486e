#include "date_time.h"

#include <gtest/gtest.h>

#include <cmath>

#include "error_of.h"
#include "regional_settings.h"

namespace ledgix::runtime {
namespace {

using test::ErrorOf;

constexpr double kSecond = 1.0 / 86400;
constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958465;   // 31 December 9999

std::string Format(const CivilTime& time, std::string_view pattern) {
    return FormatDate(time, pattern, UnitedStates().month_abbreviations);
}

TEST(CivilTimes, CountDaysFromTheEndOf1899) {
    EXPECT_EQ(ToIso8601(Date{0}), "1899-12-30T00:00:00");
    EXPECT_EQ(ToIso8601(Date{1}), "1899-12-31T00:00:00");
    EXPECT_EQ(ToIso8601(Date{36526.75}), "2000-01-01T18:00:00");
    EXPECT_EQ(ToCivilTime(Date{36585}), (CivilTime{2000, 2, 29, 0, 0, 0}));
}

TEST(CivilTimes, CountTheTimeForwardsOnNegativeDays) {
    EXPECT_EQ(ToIso8601(Date{-1.25}), "1899-12-29T06:00:00");
    EXPECT_EQ(ToIso8601(Date{-0.25}), "1899-12-30T06:00:00");
    EXPECT_EQ(ToDate(CivilTime{1899, 12, 29, 6, 0, 0}), Date{-1.25});
    EXPECT_EQ(ToDate(CivilTime{1899, 12, 30, 6, 0, 0}), Date{0.25});
}

TEST(CivilTimes, RoundToTheNearestSecond) {
    EXPECT_EQ(ToCivilTime(Date{1 + 0.4 * kSecond}).second, 0);
    EXPECT_EQ(ToCivilTime(Date{1 + 0.6 * kSecond}).second, 1);
}

TEST(CivilTimes, RoundUpToTheNextDay) {
    EXPECT_EQ(ToIso8601(Date{2 - 0.3 * kSecond}), "1900-01-01T00:00:00");
    EXPECT_EQ(ToIso8601(Date{-2 + -1 + 0.3 * kSecond}), "1899-12-29T00:00:00");
    EXPECT_EQ(ToIso8601(Date{-1 + 0.3 * kSecond}), "1899-12-31T00:00:00");
}

TEST(CivilTimes, EndWithTheCalendar) {
    EXPECT_EQ(ToIso8601(Date{kFirstDay}), "0100-01-01T00:00:00");
    EXPECT_EQ(ToIso8601(Date{kFirstDay - 0.5}), "0100-01-01T12:00:00");
    EXPECT_EQ(ToIso8601(Date{kLastDay + 0.5}), "9999-12-31T12:00:00");
    EXPECT_EQ(ErrorOf([] { ToCivilTime(Date{kFirstDay - 1}); }), 6);
    EXPECT_EQ(ErrorOf([] { ToCivilTime(Date{kLastDay + 1}); }), 6);
    EXPECT_EQ(ErrorOf([] { ToCivilTime(Date{kLastDay + 1 - 0.1 * kSecond}); }), 6);
    EXPECT_EQ(ErrorOf([] { ToCivilTime(Date{std::nan("")}); }), 6);
}

TEST(CivilTimes, OutsideTheCalendarAreShownAsNumbers) {
    EXPECT_EQ(ToIso8601(Date{3000000}), "3000000");
    EXPECT_EQ(ToIso8601(Date{-1e20}), "-1E+20");
    EXPECT_EQ(ToIso8601(Date{kLastDay + 1 - 0.1 * kSecond}), "2958465.99999884");
}

TEST(Dates, RefuseWhatIsNoDayOrTime) {
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 2, 29, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 13, 1, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 257, 1, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 1, 257, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{99, 1, 1, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{67562, 1, 1, 0, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 1, 1, 24, 0, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 1, 1, 0, 60, 0}); }), 13);
    EXPECT_EQ(ErrorOf([] { ToDate(CivilTime{2026, 1, 1, 0, 0, -1}); }), 13);
}

TEST(IsoTexts, ComeBackAsTheSameSecond) {
    for (const char* text : {"0100-01-01T00:00:00", "1899-12-29T23:59:59", "1899-12-30T00:00:01", "2024-02-29T12:34:56",
                             "2026-02-14T20:15:30", "9999-12-31T23:59:59"}) {
        const std::optional<Date> date = ParseIso8601(text);
        ASSERT_TRUE(date) << text;
        EXPECT_EQ(ToIso8601(*date), text);
    }
}

TEST(IsoTexts, MayLackTheTimeOrHaveABlankBeforeIt) {
    EXPECT_EQ(ParseIso8601("2026-02-14"), ToDate(CivilTime{2026, 2, 14, 0, 0, 0}));
    EXPECT_EQ(ParseIso8601("2026-02-14 06:00:00"), ToDate(CivilTime{2026, 2, 14, 6, 0, 0}));
    EXPECT_EQ(ParseIso8601("2026-2-4"), ToDate(CivilTime{2026, 2, 4, 0, 0, 0}));
}

TEST(IsoTexts, AreRefusedWhenTheyAreSomethingElse) {
    for (const char* text : {"", "2026", "2026-02", "2026-02-30", "2026-00-01", "26-02-14", "2026-+2-14", "2026- 2-14",
                             "2026-02-14T", "2026-02-14T20:15", "2026-02-14T24:00:00", "2026-02-14T20:15:30Z",
                             "2026-02-14x20:15:30", "2026-02-014", "-026-02-14", "02/14/2026"})
        EXPECT_FALSE(ParseIso8601(text)) << text;
}

TEST(DatePatterns, OfTheLogFile) {
    EXPECT_EQ(Format({2026, 11, 7, 9, 5, 3}, "MMMYY"), "Nov26");
    EXPECT_EQ(Format({2026, 11, 7, 9, 5, 3}, "DD/MM/YY hh:nn:ss"), "07/11/26 09:05:03");
    EXPECT_EQ(Format({2005, 1, 31, 23, 59, 59}, "DD/MM/YY hh:nn:ss"), "31/01/05 23:59:59");
}

TEST(DatePatterns, OfShortDates) {
    EXPECT_EQ(Format({2026, 2, 4, 0, 0, 0}, "m/d/yyyy"), "2/4/2026");
    EXPECT_EQ(Format({2026, 2, 4, 0, 0, 0}, "dd.mm.yyyy"), "04.02.2026");
    EXPECT_EQ(Format({2026, 2, 4, 0, 0, 0}, "d-mmm-yy"), "4-Feb-26");
    EXPECT_EQ(Format({150, 2, 4, 0, 0, 0}, "yyyy"), "0150");
}

TEST(DatePatterns, KeepOtherCharacters) {
    EXPECT_EQ(Format({2026, 2, 4, 0, 0, 0}, "[yy] x–x"), "[26] x–x");
}

}  // namespace
}  // namespace ledgix::runtime
