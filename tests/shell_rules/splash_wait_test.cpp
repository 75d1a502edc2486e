#include "splash_wait.h"

#include <gtest/gtest.h>

#include <cmath>

#include "cases.h"

namespace ledgix::shell {
namespace {

constexpr double kSecondsOfDay = 86400;

class SplashWaitCase : public testing::TestWithParam<test::Json> {
protected:
    double start_clock() const { return GetParam()["startClock"].get<double>(); }
};

void ExpectEnd(const SplashWait& wait, double start_clock, double until) {
    EXPECT_FALSE(wait.IsOver(start_clock));
    EXPECT_FALSE(wait.IsOver(std::nextafter(until, 0)));
    EXPECT_TRUE(wait.IsOver(until));
    EXPECT_TRUE(wait.IsOver(until + 100));
}

// Not on its own day, and on the next only where the clock gets that far.
void ExpectNoEndBeforeMidnight(const SplashWait& wait, double start_clock) {
    for (double clock = start_clock; clock < kSecondsOfDay; clock += 0.01)
        ASSERT_FALSE(wait.IsOver(clock)) << clock;
    for (double clock = 0; clock < start_clock; clock += 0.5)
        ASSERT_FALSE(wait.IsOver(clock)) << clock;
    EXPECT_TRUE(wait.IsOver(wait.start() + 1.5));
}

TEST_P(SplashWaitCase, BeginsAtTheNearestWholeSecond) {
    EXPECT_EQ(SplashWait(start_clock()).start(), GetParam()["start"].get<int>());
}

TEST_P(SplashWaitCase, EndsAtItsMomentAndNotBefore) {
    const SplashWait wait(start_clock());
    const test::Json until = GetParam()["until"];
    if (until.is_null())
        ExpectNoEndBeforeMidnight(wait, start_clock());
    else
        ExpectEnd(wait, start_clock(), until.get<double>());
}

std::string StartName(const testing::TestParamInfo<test::Json>& info) {
    return test::TestName(info.index, info.param["startClock"].dump());
}

INSTANTIATE_TEST_SUITE_P(Starts, SplashWaitCase, testing::ValuesIn(test::CaseList(test::LoadCases("splash_wait.json"))),
                         StartName);

}  // namespace
}  // namespace ledgix::shell
