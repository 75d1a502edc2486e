#include "pasted_amount.h"

#include <gtest/gtest.h>

#include "regions.h"

namespace ledgix::controls {
namespace {

using test::Germany;
using test::RegionWith;

constexpr const char* kNothing = "nothing";

std::string InUnitedStates(std::string_view text) {
    return ReadAmount(text, runtime::UnitedStates()).value_or(kNothing);
}
std::string InGermany(std::string_view text) {
    return ReadAmount(text, Germany()).value_or(kNothing);
}

TEST(PastedAmount, WithBothSeparatorsIsTheSameEverywhere) {
    for (const auto& read : {InUnitedStates, InGermany}) {
        EXPECT_EQ(read("1,234.50"), "1234.50");
        EXPECT_EQ(read("1.234,50"), "1234.50");
        EXPECT_EQ(read("12,345,678.9"), "12345678.9");
        EXPECT_EQ(read("1,234,567"), "1234567");
        EXPECT_EQ(read("1.234.567"), "1234567");
    }
}

TEST(PastedAmount, WithOneSeparatorFollowsTheLocale) {
    EXPECT_EQ(InUnitedStates("1,234"), "1234");
    EXPECT_EQ(InUnitedStates("1.234"), "1.234");
    EXPECT_EQ(InGermany("1.234"), "1234");
    EXPECT_EQ(InGermany("1,234"), "1.234");
    EXPECT_EQ(InGermany("12,34"), "12.34");
    EXPECT_EQ(InGermany("12345,6"), "12345.6");
}

TEST(PastedAmount, ThatCouldBeAHundredTimesAsMuchIsNothing) {
    EXPECT_EQ(InUnitedStates("12,34"), kNothing);
    EXPECT_EQ(InUnitedStates(",50"), kNothing);
    EXPECT_EQ(InUnitedStates("0,123"), kNothing);
    EXPECT_EQ(InUnitedStates("1234,567"), kNothing);
    EXPECT_EQ(InGermany("12.34"), kNothing);
    EXPECT_EQ(InGermany("0.5"), kNothing);
}

TEST(PastedAmount, MayBeGroupedByBlanksAndApostrophes) {
    for (const char* blank : {" ", "\u00A0", "\u202F", "\u2009"})
        EXPECT_EQ(InGermany("1" + std::string(blank) + "234" + blank + "567,5"), "1234567.5") << blank;
    EXPECT_EQ(InUnitedStates("1'234.50"), "1234.50");
    EXPECT_EQ(InUnitedStates("1\u2019234\u2019567"), "1234567");
    EXPECT_EQ(InUnitedStates("1 234,50"), "1234.50");
}

TEST(PastedAmount, MayBeGroupedAsInIndia) {
    EXPECT_EQ(InUnitedStates("12,34,567.50"), "1234567.50");
    EXPECT_EQ(InUnitedStates("12,34,56"), kNothing);
}

TEST(PastedAmount, WithUnevenGroupsIsNothing) {
    EXPECT_EQ(InUnitedStates("1,2345.00"), kNothing);
    EXPECT_EQ(InUnitedStates("1234,567.00"), kNothing);
    EXPECT_EQ(InUnitedStates("1,23 456"), kNothing);
    EXPECT_EQ(InUnitedStates("1.2.3"), kNothing);
    EXPECT_EQ(InUnitedStates("12 34"), kNothing);
    EXPECT_EQ(InUnitedStates("1 234'567"), kNothing);
}

TEST(PastedAmount, MayHaveACurrencyBeforeOrBehind) {
    EXPECT_EQ(InUnitedStates("$1,234.50"), "1234.50");
    EXPECT_EQ(InUnitedStates("US$ 5"), "5");
    EXPECT_EQ(InUnitedStates("USD 5"), "5");
    EXPECT_EQ(InUnitedStates("5NZD"), "5");
    EXPECT_EQ(InGermany("1.234,50 €"), "1234.50");
    EXPECT_EQ(InGermany("€5"), "5");
    EXPECT_EQ(ReadAmount("1 234,50 kr.", RegionWith(",", " ", "kr.")), "1234.50");
    EXPECT_EQ(ReadAmount("Rs.1,234", RegionWith(".", ",", "Rs.")), "1234");
}

TEST(PastedAmount, WithTwoCurrenciesOrOtherWordsIsNothing) {
    for (const char* text : {"$5€", "5 apples", "5 k", "12abc", "1E3", "5%", "Total 5", "USDX 5", "kr 5", "EUR"})
        EXPECT_EQ(InUnitedStates(text), kNothing) << text;
}

TEST(PastedAmount, IsNegativeByMinusOrParentheses) {
    for (const char* text : {"-5", "5-", "(5)", "\u22125", "-$5", "$-5", "($5)", "$(5)", "- 5", "5 -", "-5 USD"})
        EXPECT_EQ(InUnitedStates(text), "-5") << text;
    EXPECT_EQ(InUnitedStates("+5"), "5");
}

TEST(PastedAmount, WithSignsInTheWrongPlaceIsNothing) {
    for (const char* text : {"--5", "-(5)", "(5", "5)", "()", "1-2", "-", "+", "5.-", "1'234.\u2013"})
        EXPECT_EQ(InUnitedStates(text), kNothing) << text;
}

TEST(PastedAmount, MayComeFromACellOrALine) {
    EXPECT_EQ(InUnitedStates("1,234.50\r\n"), "1234.50");
    EXPECT_EQ(InUnitedStates("\t5\t"), "5");
    EXPECT_EQ(InUnitedStates("\uFEFF\u200E5\u200F"), "5");
}

TEST(PastedAmount, OfSeveralCellsOrLinesIsNothing) {
    EXPECT_EQ(InUnitedStates("1\t234"), kNothing);
    EXPECT_EQ(InUnitedStates("1\n234"), kNothing);
}

TEST(PastedAmount, MayHaveDigitsOfOtherScripts) {
    EXPECT_EQ(InUnitedStates("\uFF11\uFF12.\uFF15"), "12.5");
}

TEST(PastedAmount, MayBeAFractionAlone) {
    EXPECT_EQ(InUnitedStates(".5"), ".5");
    EXPECT_EQ(InGermany(",5"), ".5");
}

TEST(PastedAmount, OfNoDigitsIsNothing) {
    for (const char* text : {"", " ", ".", ",", "$", "5.", "\xFF", "."})
        EXPECT_EQ(InUnitedStates(text), kNothing) << text;
    EXPECT_EQ(InUnitedStates(std::string(400, '9')), kNothing);
}

TEST(DecimalSeparator, IsACommaOnlyWhereTheRegionHasOne) {
    EXPECT_EQ(DecimalSeparator(runtime::UnitedStates()), '.');
    EXPECT_EQ(DecimalSeparator(Germany()), ',');
    EXPECT_EQ(DecimalSeparator(RegionWith("\u066B", "\u066C", "")), '.');
}

}  // namespace
}  // namespace ledgix::controls
