#include "clock.h"

#include <gtest/gtest.h>

#include "fixed_clock.h"

namespace ledgix::runtime {
namespace {

TEST(SystemClock, TellsAMomentOfTheCalendar) {
    const CivilTime before = SystemTime().Now();
    EXPECT_GE(before.year, 2020);
    const double difference = ToDate(SystemTime().Now()).days - ToDate(before).days;
    EXPECT_GE(difference, 0);
    EXPECT_LT(difference * 86400, 60);
}

TEST(SystemClock, CountsSecondsSinceMidnight) {
    const double seconds = SystemTime().SecondsSinceMidnight();
    EXPECT_GE(seconds, 0);
    EXPECT_LT(seconds, 86400);
    const CivilTime now = SystemTime().Now();
    const double later = now.hour * 3600 + now.minute * 60 + now.second - seconds;
    EXPECT_TRUE((later > -2 && later < 60) || later < -86300) << later;
}

TEST(InstalledClock, TellsTheTimeUntilItGoes) {
    {
        test::FixedClock clock({2026, 11, 7, 9, 5, 3});
        EXPECT_EQ(SystemTime().Now(), (CivilTime{2026, 11, 7, 9, 5, 3}));
        clock.Set({2026, 11, 7, 23, 59, 59}, 0.5);
        EXPECT_EQ(SystemTime().SecondsSinceMidnight(), 86399.5);
    }
    InstallClock(nullptr);
    EXPECT_GE(SystemTime().Now().year, 2020);
}

}  // namespace
}  // namespace ledgix::runtime
