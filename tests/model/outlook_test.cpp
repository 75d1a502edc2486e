#include "outlook.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "error_of.h"
#include "household_builder.h"
#include "purchase_analysis.h"

namespace ledgix::model {
namespace {

using runtime::ErrorNumber;
using test::Json;

TaxTable BracketsOf(const Json& brackets) {
    TaxTable table;
    for (const Json& bracket : brackets) {
        const double rate = static_cast<double>(static_cast<float>(bracket.at("rate").get<double>()));
        if (bracket.at("upper") == 0)
            table.top_rate = rate;
        else
            table.bounded.push_back({bracket.at("upper").get<double>(), rate});
    }
    return table;
}

IncomeTaxFunction TaxOf(const Json& test_case) {
    return [table = BracketsOf(test_case.at("TaxRates"))](double income) { return IncomeTax(income, table); };
}

void ExpectYears(const YearlyRecords& records, YearValue value, const Json& expected) {
    for (std::size_t year = 0; year <= kLastYear; ++year)
        EXPECT_EQ(records[year][value], expected.at(year).get<double>()) << "year " << year;
}

class MortgageOutlookCase : public testing::TestWithParam<Json> {
protected:
    clsProfile profile = test::ProfileOf(GetParam().at("profile"));
    clsProperty property = test::PropertyOf(GetParam().at("property"));
    IncomeTaxFunction tax = TaxOf(GetParam());
    bool fails = GetParam().contains("error");
};

TEST_P(MortgageOutlookCase, MortgageCost) {
    if (fails) {
        EXPECT_ERROR(property.MortgageCost(), GetParam().at("error").get<int>());
        return;
    }
    EXPECT_EQ(property.MortgageCost(), GetParam().at("MortgageCost").get<double>());
    ExpectYears(property.records, YearValue::kInterest, GetParam().at("interest"));
    ExpectYears(property.records, YearValue::kPrincipal, GetParam().at("principal"));
}

TEST_P(MortgageOutlookCase, FirstYear) {
    if (fails) {
        EXPECT_ERROR(AnalyseFirstYear(property, profile, tax), GetParam().at("error").get<int>());
        return;
    }
    const FirstYear year = AnalyseFirstYear(property, profile, tax);
    const std::map<std::string, double> figures{{"MC", year.MC}, {"DC", year.DC}, {"DH", year.DH}, {"PT", year.PT},
                                                {"S", year.S},   {"TA", year.TA}, {"TB", year.TB}, {"R", year.R},
                                                {"SP", year.SP}, {"SB", year.SB}, {"SA", year.SA}};
    for (const auto& [name, value] : GetParam().at("firstYear").items())
        EXPECT_DOUBLE_EQ(figures.at(name), value.get<double>()) << name;
}

TEST_P(MortgageOutlookCase, YearlyRecords) {
    if (fails) {
        EXPECT_ERROR(ComputeOutlook(property, profile, tax), GetParam().at("error").get<int>());
        return;
    }
    const Outlook outlook = ComputeOutlook(property, profile, tax);
    for (std::size_t year = 0; year <= kLastYear; ++year)
        for (std::size_t value = 0; value < kYearValues; ++value)
            EXPECT_DOUBLE_EQ(outlook.records[year].values[value],
                             GetParam().at("records").at(year).at(value).get<double>())
                << "year " << year << " value " << value;
}

TEST_P(MortgageOutlookCase, Returns) {
    if (fails) {
        EXPECT_ERROR(ComputeOutlook(property, profile, tax), GetParam().at("error").get<int>());
        return;
    }
    const Outlook outlook = ComputeOutlook(property, profile, tax);
    const Json& expected = GetParam().at("return");
    for (std::size_t year = 0; year <= kLastReportYear; ++year) {
        const std::optional<double> figure =
            expected.is_null() ? std::nullopt : std::optional(expected.at(year).get<double>());
        EXPECT_EQ(outlook.returns[year], figure) << "year " << year;
    }
}

INSTANTIATE_TEST_SUITE_P(Property, MortgageOutlookCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("mortgage_outlook.json"))), test::CaseName);

clsProperty Mortgaged(float rate, std::int16_t term) {
    clsProperty property;
    property.PurchasePrice = 200000;
    property.PurchaseCosts = 2000;
    property.DepositValue = 43000;
    property.MortgageRate = rate;
    property.MortgageTerm = term;
    return property;
}

double NoTax(double) {
    return 0;
}

TEST(MortgageCost, IsNothingWithoutRateTermOrMortgage) {
    EXPECT_EQ(Mortgaged(0, 20).MortgageCost(), 0);
    EXPECT_EQ(Mortgaged(7.5F, 0).MortgageCost(), 0);
    EXPECT_EQ(Mortgaged(7.5F, -5).MortgageCost(), 0);
    clsProperty paid = Mortgaged(7.5F, 20);
    paid.DepositValue = 202000;
    EXPECT_EQ(paid.MortgageCost(), 0);
}

TEST(MortgageCost, LeavesTheRecordsAloneWhenItIsNothing) {
    clsProperty property = Mortgaged(0, 20);
    property.records[3][YearValue::kInterest] = -7;
    property.MortgageCost();
    EXPECT_EQ(property.records[3][YearValue::kInterest], -7);
}

TEST(MortgageCost, OverflowsBeforeTheRateIsLookedAt) {
    EXPECT_ERROR(Mortgaged(0, 2731).MortgageCost(), ErrorNumber::kOverflow);
    EXPECT_EQ(Mortgaged(0, 2730).MortgageCost(), 0);
}

TEST(MortgageCost, OfALongTermIsRecordedForTwentyYears) {
    clsProperty property = Mortgaged(7.5F, 40);
    EXPECT_GT(property.MortgageCost(), 0);
    EXPECT_LT(property.records[20][YearValue::kInterest], 0);
}

TEST(MortgageCost, OfInterestOnlyRepaysNothing) {
    clsProperty property = Mortgaged(7.5F, 20);
    property.InterestOnly = true;
    EXPECT_EQ(property.MortgageCost(), 11925);
    for (const YearRecord& year : property.records)
        EXPECT_EQ(year[YearValue::kPrincipal], 0);
}

TEST(MortgageCost, ClearsWhatALongerTermLeft) {
    clsProperty property = Mortgaged(7.5F, 20);
    property.MortgageCost();
    property.MortgageTerm = 5;
    property.MortgageCost();
    EXPECT_EQ(property.records[6][YearValue::kInterest], 0);
    EXPECT_LT(property.records[5][YearValue::kInterest], 0);
}

TEST(MortgageCost, CannotDivideByARateThatIsLostInRounding) {
    EXPECT_ERROR(Mortgaged(1e-20F, 20).MortgageCost(), ErrorNumber::kDivisionByZero);
}

TEST(FirstYear, OfATaxableProfitHasANegativeRefund) {
    clsProperty property = Mortgaged(0, 0);
    property.RentIncome = 30000;
    clsProfile profile;
    profile.IncSalary = 50000;
    const TaxTable table{{}, 30};
    const FirstYear year = AnalyseFirstYear(property, profile, [&](double income) { return IncomeTax(income, table); });
    EXPECT_EQ(year.PT, 30000);
    EXPECT_EQ(year.R, -9000);
}

TEST(FirstYear, MakesTheOwnerBetterOffByTheSurplusOfTheProperty) {
    clsProperty property = Mortgaged(7.5F, 20);
    property.RentIncome = 15600;
    clsProfile profile;
    profile.IncSalary = 62000;
    const FirstYear year = AnalyseFirstYear(property, profile, NoTax);
    EXPECT_EQ(year.SA - year.SB, year.SP);
}

TEST(Outlook, StartsFromZeroedRecordsOnEveryRun) {
    clsProperty property = Mortgaged(7.5F, 20);
    const clsProfile profile;
    ComputeOutlook(property, profile, NoTax);
    property.MortgageRate = 0;
    const Outlook second = ComputeOutlook(property, profile, NoTax);
    EXPECT_EQ(second.records[1][YearValue::kInterest], 0);
    EXPECT_EQ(second.records[20][YearValue::kPrincipal], 0);
}

TEST(Outlook, WithoutInflationKeepsIncomeAndExpenses) {
    clsProperty property = Mortgaged(0, 0);
    property.RentIncome = 15600.5;
    property.Rates = 1200;
    const Outlook outlook = ComputeOutlook(property, clsProfile(), NoTax);
    EXPECT_EQ(outlook.records[1][YearValue::kIncome], 15600.5);
    EXPECT_EQ(outlook.records[2][YearValue::kIncome], 15600);
    EXPECT_EQ(outlook.records[20][YearValue::kExpenses], -1200);
}

TEST(Outlook, KeepsTheMortgageOfInterestOnly) {
    clsProperty property = Mortgaged(7.5F, 20);
    property.InterestOnly = true;
    const Outlook outlook = ComputeOutlook(property, clsProfile(), NoTax);
    for (const YearRecord& year : outlook.records)
        EXPECT_EQ(year[YearValue::kMortgageBalance], 159000);
}

TEST(Outlook, WritesAllOffInTheFirstYearAtAFullRate) {
    clsProperty property = Mortgaged(0, 0);
    property.HouseValue = 110000;
    property.HouseDepn = 100;
    const Outlook outlook = ComputeOutlook(property, clsProfile(), NoTax);
    EXPECT_EQ(outlook.records[1][YearValue::kHouseDepreciation], 110000);
    EXPECT_EQ(outlook.records[1][YearValue::kHouseValueLeft], 0);
    EXPECT_EQ(outlook.records[2][YearValue::kHouseDepreciation], 0);
}

TEST(Outlook, WithoutADepositHasNoReturns) {
    clsProperty property = Mortgaged(7.5F, 20);
    property.DepositValue = 0;
    for (const auto& figure : ComputeOutlook(property, clsProfile(), NoTax).returns)
        EXPECT_FALSE(figure.has_value());
}

TEST(Outlook, OverflowsBeyondADouble) {
    clsProperty property = Mortgaged(0, 0);
    property.PurchasePrice = 1e308;
    property.PriceIncreases = 100;
    EXPECT_ERROR(ComputeOutlook(property, clsProfile(), NoTax), ErrorNumber::kOverflow);
}

}  // namespace
}  // namespace ledgix::model
