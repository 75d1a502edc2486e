#include "period_amounts.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "error_of.h"

namespace ledgix::controls {
namespace {

using nlohmann::json;
using test::CaseName;

Period PeriodOf(const std::string& field) {
    return field == "txtWeek" ? Period::kWeek : field == "txtMonth" ? Period::kMonth : Period::kYear;
}

class Calculator : public testing::TestWithParam<json> {};
TEST_P(Calculator, KeepsTheAmountsInStepAsListed) {
    PeriodAmounts amounts;
    for (const json& step : GetParam().at("steps"))
        for (const auto& [field, text] : step.items())
            amounts.Enter(PeriodOf(field), text.get<std::string>());
    for (const char* field : {"txtWeek", "txtMonth", "txtYear"})
        EXPECT_EQ(amounts.Text(PeriodOf(field)), GetParam().at(field).get<std::string>()) << field;
    EXPECT_EQ(amounts.Text(Period::kYear), GetParam().at("result").get<std::string>());
}
INSTANTIATE_TEST_SUITE_P(, Calculator, testing::ValuesIn(test::CaseList(test::LoadCases("period_calculator.json"))),
                         CaseName);

TEST(PeriodAmounts, StartAtZero) {
    const PeriodAmounts amounts;
    EXPECT_EQ(amounts.Text(Period::kWeek), "0");
    EXPECT_EQ(amounts.Text(Period::kYear), "0");
}

TEST(PeriodAmounts, OfAWeekReachTheMonthThroughTheYear) {
    PeriodAmounts amounts;
    amounts.Enter(Period::kWeek, "100");
    EXPECT_EQ(amounts.Text(Period::kYear), "5200");
    EXPECT_EQ(amounts.Text(Period::kMonth), "433");
}

TEST(PeriodAmounts, AreCutAndNeverRounded) {
    PeriodAmounts amounts;
    amounts.Enter(Period::kYear, "1000");
    EXPECT_EQ(amounts.Text(Period::kMonth), "83");
    EXPECT_EQ(amounts.Text(Period::kWeek), "19");
}

TEST(PeriodAmounts, AreNeverNegative) {
    PeriodAmounts amounts;
    amounts.Enter(Period::kMonth, "-100");
    EXPECT_EQ(amounts.Text(Period::kMonth), "100");
    EXPECT_EQ(amounts.Text(Period::kYear), "1200");
}

TEST(PeriodAmounts, OfMoreThanFifteenDigitsAreWrittenOut) {
    PeriodAmounts amounts;
    amounts.Enter(Period::kMonth, "1000000000000000");
    EXPECT_EQ(amounts.Text(Period::kYear), "12000000000000000");
}

TEST(PeriodAmounts, BeyondADoubleStayAsTheyWere) {
    PeriodAmounts amounts;
    amounts.Enter(Period::kWeek, "100");
    EXPECT_EQ(test::ErrorOf([&] { amounts.Enter(Period::kWeek, "1" + std::string(308, '0')); }), 6);
    EXPECT_EQ(amounts.Text(Period::kWeek), "100");
    EXPECT_EQ(amounts.Text(Period::kYear), "5200");
}

}  // namespace
}  // namespace ledgix::controls
