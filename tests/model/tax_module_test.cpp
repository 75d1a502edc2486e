#include "tax_module.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "error_of.h"
#include "household_builder.h"

namespace ledgix::model {
namespace {

using test::Json;

class CalculateIncomeTaxCase : public testing::TestWithParam<Json> {};

TEST_P(CalculateIncomeTaxCase, GivesTheTax) {
    const test::InstalledDatabase database(test::CaseContent(GetParam()));
    EXPECT_EQ(CalculateIncomeTax(GetParam().at("Income").get<double>()), GetParam().at("tax").get<double>());
}

INSTANTIATE_TEST_SUITE_P(IncomeTax, CalculateIncomeTaxCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("income_tax.json"))), test::CaseName);

const TaxTable kDefaults{{{38000, 19.5}, {60000, 33}}, 39};

TEST(IncomeTax, OfTheWorkedExample) {
    EXPECT_EQ(IncomeTax(70000, kDefaults), 18570);
    EXPECT_EQ(IncomeTax(38000, kDefaults), 7410);
}

TEST(IncomeTax, OfNothingIsNothing) {
    EXPECT_EQ(IncomeTax(0, kDefaults), 0);
}

TEST(IncomeTax, WithoutBracketsIsNothing) {
    EXPECT_EQ(IncomeTax(50000, {}), 0);
}

TEST(IncomeTax, OfANegativeIncomeIsTheNegativeTax) {
    EXPECT_EQ(IncomeTax(-70000, kDefaults), -18570);
}

TEST(IncomeTax, OfAnIncomeOnABoundIsOfTheLowerBracket) {
    EXPECT_EQ(IncomeTax(60000, kDefaults), 14670);
}

TEST(IncomeTax, WithATopBracketOnlyTaxesAllIncome) {
    EXPECT_EQ(IncomeTax(1000, {{}, 39}), 390);
}

TEST(IncomeTax, WithoutATopBracketLeavesHighIncomeUntaxed) {
    EXPECT_EQ(IncomeTax(1000000, {{{38000, 19.5}}, {}}), 7410);
}

TEST(IncomeTax, TakesASecondBracketOfTheSameBoundForAnEmptySlice) {
    EXPECT_EQ(IncomeTax(50000, {{{38000, 19.5}, {38000, 99}}, {}}), 7410);
}

TEST(IncomeTax, RoundsHalfADollarToTheEvenDollar) {
    EXPECT_EQ(IncomeTax(10, {{{10, 25}}, {}}), 2);
}

TEST(IncomeTax, RoundsEachBracketOnItsOwn) {
    EXPECT_EQ(IncomeTax(4, {{{2, 30}, {4, 30}}, {}}), 2);
}

TEST(IncomeTax, OverflowsWithABoundBeyond32Bits) {
    EXPECT_ERROR(IncomeTax(1, {{{3e9, 10}}, {}}), runtime::ErrorNumber::kOverflow);
}

TEST(CalculateIncomeTax, ReadsTheTableAfreshEachTime) {
    const auto content = [](double rate) {
        return test::HouseholdBuilder().AddTaxRates(Json::array({{{"upper", 0}, {"rate", rate}}})).Finish();
    };
    {
        const test::InstalledDatabase database(content(10));
        EXPECT_EQ(CalculateIncomeTax(1000), 100);
    }
    const test::InstalledDatabase database(content(20));
    EXPECT_EQ(CalculateIncomeTax(1000), 200);
}

TEST(CalculateIncomeTax, FailsOnARateThatIsNull) {
    const test::InstalledDatabase database(
        test::HouseholdBuilder().AddTaxRates(Json::array({{{"upper", 0}, {"rate", nullptr}}})).Finish());
    EXPECT_ERROR(CalculateIncomeTax(1000), runtime::ErrorNumber::kInvalidNull);
}

}  // namespace
}  // namespace ledgix::model
