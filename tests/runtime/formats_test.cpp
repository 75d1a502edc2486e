#include "formats.h"

#include <gtest/gtest.h>

#include <limits>

#include "cases.h"
#include "error_of.h"

namespace ledgix::runtime {
namespace {

using nlohmann::json;
using Minus = RegionalSettings::Minus;

std::vector<json> NumberTexts(const char* list) {
    return test::CaseList(test::LoadCases("number_text.json").at(list));
}

class TwoDecimals : public testing::TestWithParam<json> {};
TEST_P(TwoDecimals, AreAsListed) {
    EXPECT_EQ(FormatTwoDecimals(GetParam().at("value").get<double>()), GetParam().at("text").get<std::string>());
}
INSTANTIATE_TEST_SUITE_P(, TwoDecimals, testing::ValuesIn(NumberTexts("format_0_00")), test::CaseName);

class UnitedStatesCurrency : public testing::TestWithParam<json> {};
TEST_P(UnitedStatesCurrency, IsAsListed) {
    EXPECT_EQ(FormatCurrency(GetParam().at("value").get<double>(), UnitedStates()),
              GetParam().at("text").get<std::string>());
}
INSTANTIATE_TEST_SUITE_P(, UnitedStatesCurrency, testing::ValuesIn(NumberTexts("currency_en_US")), test::CaseName);

RegionalSettings WithMinus(Minus minus) {
    RegionalSettings region = UnitedStates();
    region.minus = minus;
    return region;
}

RegionalSettings Germany() {
    RegionalSettings region = UnitedStates();
    region.currency_symbol = "€";
    region.symbol_first = false;
    region.space_between = true;
    region.decimal_separator = ",";
    region.group_separator = ".";
    return region;
}

RegionalSettings India() {
    RegionalSettings region = UnitedStates();
    region.currency_symbol = "₹";
    region.group_sizes = {3, 2};
    return region;
}

TEST(TwoDecimalFormat, NeverShowsANegativeZero) {
    EXPECT_EQ(FormatTwoDecimals(-0.0), "0.00");
    EXPECT_EQ(FormatTwoDecimals(-0.004), "0.00");
}

TEST(TwoDecimalFormat, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(FormatTwoDecimals(0.125), "0.12");
    EXPECT_EQ(FormatTwoDecimals(0.375), "0.38");
    EXPECT_EQ(FormatTwoDecimals(2.675), "2.68");
}

TEST(TwoDecimalFormat, RefusesWhatIsNoNumber) {
    EXPECT_EQ(test::ErrorOf([] { FormatTwoDecimals(std::numeric_limits<double>::infinity()); }), 6);
    EXPECT_EQ(test::ErrorOf([] { FormatCurrency(std::numeric_limits<double>::quiet_NaN(), UnitedStates()); }), 6);
}

TEST(CurrencyFormat, ShowsTheLargestDouble) {
    EXPECT_EQ(FormatTwoDecimals(std::numeric_limits<double>::max()).size(), 312U);
    EXPECT_EQ(FormatCurrency(std::numeric_limits<double>::max(), UnitedStates()).substr(0, 5), "$179,");
}

TEST(CurrencyFormat, PutsTheMinusWhereTheRegionDoes) {
    EXPECT_EQ(FormatCurrency(-1234.5, UnitedStates()), "-$1,234.50");
    EXPECT_EQ(FormatCurrency(-1234.5, WithMinus(Minus::kParentheses)), "($1,234.50)");
    EXPECT_EQ(FormatCurrency(-1234.5, WithMinus(Minus::kAfterAll)), "$1,234.50-");
    EXPECT_EQ(FormatCurrency(-1234.5, WithMinus(Minus::kBeforeSymbol)), "-$1,234.50");
    EXPECT_EQ(FormatCurrency(-1234.5, WithMinus(Minus::kAfterSymbol)), "$-1,234.50");
}

TEST(CurrencyFormat, HasNoMinusForWhatRoundsToZero) {
    EXPECT_EQ(FormatCurrency(-0.001, UnitedStates()), "$0.00");
    EXPECT_EQ(FormatCurrency(-0.004, WithMinus(Minus::kParentheses)), "$0.00");
    EXPECT_EQ(FormatCurrency(-0.006, UnitedStates()), "-$0.01");
}

TEST(CurrencyFormat, PutsTheSymbolBehindInGermany) {
    EXPECT_EQ(FormatCurrency(1234567.891, Germany()), "1.234.567,89 €");
    EXPECT_EQ(FormatCurrency(-1234.5, Germany()), "-1.234,50 €");
}

TEST(CurrencyFormat, PutsTheMinusBesideASymbolThatStandsBehind) {
    RegionalSettings region = Germany();
    region.minus = Minus::kBeforeSymbol;
    EXPECT_EQ(FormatCurrency(-1.5, region), "1,50 -€");
    region.minus = Minus::kAfterSymbol;
    EXPECT_EQ(FormatCurrency(-1.5, region), "1,50 €-");
}

TEST(CurrencyFormat, RepeatsTheLastGroupSizeInIndia) {
    EXPECT_EQ(FormatCurrency(999, India()), "₹999.00");
    EXPECT_EQ(FormatCurrency(100000, India()), "₹1,00,000.00");
    EXPECT_EQ(FormatCurrency(1234567890, India()), "₹1,23,45,67,890.00");
}

TEST(CurrencyFormat, DoesWithoutGroups) {
    RegionalSettings region = UnitedStates();
    region.group_sizes.clear();
    EXPECT_EQ(FormatCurrency(1234567, region), "$1234567.00");
    region = UnitedStates();
    region.group_separator.clear();
    EXPECT_EQ(FormatCurrency(1234567, region), "$1234567.00");
}

}  // namespace
}  // namespace ledgix::runtime
