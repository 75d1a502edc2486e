#include "mortgage_limits.h"

#include <gtest/gtest.h>

#include "cases.h"

namespace ledgix::editors {
namespace {

using test::CaseName;
using test::Json;

std::vector<Json> Cases(const char* list) {
    return test::CaseList(test::LoadCases("property_editor.json").at(list));
}

class RateCase : public testing::TestWithParam<Json> {};
TEST_P(RateCase, GivesTheListedText) {
    const std::string text = GetParam().at("text");
    EXPECT_EQ(LimitedMortgageRate(text).value_or(text), GetParam().at("after").get<std::string>());
}
INSTANTIATE_TEST_SUITE_P(, RateCase, testing::ValuesIn(Cases("mortgageRate")), CaseName);

class TermCase : public testing::TestWithParam<Json> {};
TEST_P(TermCase, GivesTheListedText) {
    const std::string text = GetParam().at("text");
    EXPECT_EQ(LimitedMortgageTerm(text).value_or(text), GetParam().at("after").get<std::string>());
}
INSTANTIATE_TEST_SUITE_P(, TermCase, testing::ValuesIn(Cases("mortgageTerm")), CaseName);

TEST(MortgageLimits, LeaveATextAloneThatIsWithinThem) {
    EXPECT_EQ(LimitedMortgageRate("6.85"), std::nullopt);
    EXPECT_EQ(LimitedMortgageTerm("25"), std::nullopt);
}

TEST(MortgageLimits, LookAtTheNumberThatATextStartsWith) {
    EXPECT_EQ(LimitedMortgageRate("101 percent"), "100");
    EXPECT_EQ(LimitedMortgageTerm("twenty"), "20");
    EXPECT_EQ(LimitedMortgageTerm("-5"), "20");
    EXPECT_EQ(LimitedMortgageTerm(""), "20");
}

TEST(MortgageLimits, AreMetByWhatTheyGive) {
    EXPECT_EQ(LimitedMortgageRate(*LimitedMortgageRate("1000")), std::nullopt);
    EXPECT_EQ(LimitedMortgageTerm(*LimitedMortgageTerm("1000")), std::nullopt);
    EXPECT_EQ(LimitedMortgageTerm(*LimitedMortgageTerm("0")), std::nullopt);
}

}  // namespace
}  // namespace ledgix::editors
