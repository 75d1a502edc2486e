#include "rounding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "cases.h"
#include "error_of.h"

namespace ledgix::runtime {
namespace {

using nlohmann::json;
using test::ErrorOf;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class Rounding : public testing::TestWithParam<json> {};
TEST_P(Rounding, IsAsListed) {
    const double rounded = Round(GetParam().at("value").get<double>(), GetParam().at("places").get<int>());
    EXPECT_EQ(rounded, GetParam().at("result").get<double>());
}
INSTANTIATE_TEST_SUITE_P(, Rounding,
                         testing::ValuesIn(test::CaseList(test::LoadCases("number_text.json").at("round_half_even"))),
                         test::CaseName);

TEST(Round, TakesHalvesToTheEvenNeighbour) {
    EXPECT_EQ(Round(4.5, 0), 4.0);
    EXPECT_EQ(Round(5.5, 0), 6.0);
    EXPECT_EQ(Round(-4.5, 0), -4.0);
    EXPECT_EQ(Round(-5.5, 0), -6.0);
}

TEST(Round, MultipliesInDoubleFirst) {
    EXPECT_EQ(Round(2.675, 2), 2.68);
    EXPECT_EQ(Round(1.005, 2), 1.0);
    EXPECT_EQ(Round(3450.0 * 39 / 100, 0), 1346.0);
}

TEST(Round, NeverGivesANegativeZero) {
    EXPECT_FALSE(std::signbit(Round(-0.0, 0)));
    EXPECT_FALSE(std::signbit(Round(-0.4, 0)));
    EXPECT_FALSE(std::signbit(Round(-0.001, 2)));
    EXPECT_FALSE(std::signbit(Round(-1e-20, 0)));
}

TEST(Round, DistinguishesTheNeighboursOfAHalf) {
    EXPECT_EQ(Round(std::nextafter(0.5, 1.0), 0), 1.0);
    EXPECT_EQ(Round(std::nextafter(0.5, 0.0), 0), 0.0);
    EXPECT_EQ(Round(std::nextafter(-0.5, -1.0), 0), -1.0);
    EXPECT_EQ(Round(std::nextafter(-1.5, 0.0), 0), -1.0);
}

TEST(Round, LeavesHugeNumbersAsTheyAre) {
    EXPECT_EQ(Round(9007199254740993.0, 0), 9007199254740993.0);
    EXPECT_EQ(Round(1e308, 2), 1e308);
}

TEST(Division, ByZeroIsError11) {
    EXPECT_EQ(Divide(1, 4), 0.25);
    EXPECT_EQ(ErrorOf([] { Divide(1, 0); }), 11);
    EXPECT_EQ(ErrorOf([] { Divide(0, -0.0); }), 11);
}

TEST(Division, OverflowsBeyondADouble) {
    EXPECT_EQ(ErrorOf([] { Divide(1e300, 1e-300); }), 6);
}

TEST(OverflowCheck, LetsNumbersOfADoublePass) {
    EXPECT_EQ(CheckOverflow(1e308), 1e308);
    EXPECT_EQ(ErrorOf([] { CheckOverflow(kInfinity); }), 6);
    EXPECT_EQ(ErrorOf([] { CheckOverflow(-kInfinity); }), 6);
    EXPECT_EQ(ErrorOf([] { CheckOverflow(std::nan("")); }), 6);
}

}  // namespace
}  // namespace ledgix::runtime
