#include "amount_text.h"

#include <gtest/gtest.h>

#include "amount_keys.h"

namespace ledgix::controls {
namespace {

constexpr AmountLimits kWhole{0, false};
constexpr AmountLimits kCents{2, false};
constexpr AmountLimits kSigned{2, true};

TEST(AmountText, IsNeverEmpty) {
    EXPECT_EQ(CleanAmount("", kWhole), "0");
    EXPECT_EQ(CleanAmount(".9", kWhole), "0");
    EXPECT_EQ(CleanAmount("-", kWhole), "0");
}

TEST(AmountText, LosesOneLeadingZeroPerChange) {
    EXPECT_EQ(CleanAmount("05", kWhole), "5");
    EXPECT_EQ(CleanAmount("007", kWhole), "07");
    EXPECT_EQ(CleanAmount("0", kWhole), "0");
}

TEST(AmountText, LosesTheZeroBeforeThePoint) {
    EXPECT_EQ(CleanAmount("0.75", kCents), ".75");
    EXPECT_EQ(CleanAmount("-0.75", kSigned), "-0.75");
    EXPECT_EQ(CleanAmount("-0.75", kCents), "0.75");
}

TEST(AmountText, IsCutAndNeverRounded) {
    EXPECT_EQ(CleanAmount("12.3456", kCents), "12.34");
    EXPECT_EQ(CleanAmount("12.999", kCents), "12.99");
    EXPECT_EQ(CleanAmount("12.9", kWhole), "12");
}

TEST(AmountText, TakesFewerThanNoDecimalsForNone) {
    EXPECT_EQ(CleanAmount("12.9", {-1, false}), "12");
}

TEST(AmountText, HasItsMinusInFrontOrNowhere) {
    EXPECT_EQ(CleanAmount("5-", kSigned), "-5");
    EXPECT_EQ(CleanAmount("5-", kCents), "5");
    EXPECT_EQ(CleanAmount("-5", kCents), "5");
}

TEST(AmountText, KeepsATextOnItsWayToANumber) {
    EXPECT_EQ(CleanAmount("5.", kCents), "5.");
    EXPECT_EQ(CleanAmount("0.", kCents), ".");
    EXPECT_EQ(CleanAmount("0-", kSigned), "-");
}

TEST(AmountText, OfAMixedTextIsTheNumberInFront) {
    EXPECT_EQ(CleanAmount("12abc", kWhole), "12");
    EXPECT_EQ(CleanAmount("abc", kWhole), "0");
    EXPECT_EQ(CleanAmount("1.2.3", kCents), "1.2");
}

TEST(AmountText, IsWrittenOutInDigits) {
    EXPECT_EQ(CleanAmount("1,234,567.89", kCents), "1234567.89");
    EXPECT_EQ(CleanAmount(" +5 ", kWhole), "5");
    EXPECT_EQ(CleanAmount("1.25E+15", kCents), "1250000000000000");
    EXPECT_EQ(CleanAmount("-1.5e2", kSigned), "-150");
    EXPECT_EQ(CleanAmount("12345E-2", kCents), "123.45");
    EXPECT_EQ(CleanAmount("1E-05", {5, false}), ".00001");
}

TEST(AmountText, TakesCommasForGroupingOnlyBetweenThrees) {
    EXPECT_EQ(CleanAmount("12,34", kCents), "12");
    EXPECT_EQ(CleanAmount("1,2345", kCents), "1");
}

TEST(AmountText, SurvivesNumbersBeyondADouble) {
    EXPECT_EQ(CleanAmount("1E+999", kWhole), "0");
    EXPECT_EQ(CleanAmount(std::string(400, '9'), kWhole), "0");
    EXPECT_EQ(CleanAmount("1E-999999999", kCents), "0");
    EXPECT_EQ(AmountValue(std::string(400, '9')), 0);
}

TEST(AmountText, SurvivesBytesThatAreNoText) {
    EXPECT_EQ(CleanAmount("\xFF\xFE", kCents), "0");
    EXPECT_EQ(CleanAmount(std::string_view("5\0 6", 4), kCents), "5");
}

TEST(AssignedAmount, MayHaveTheCommaOfTheLocale) {
    EXPECT_EQ(CleanAssignedAmount("12,34", ',', kCents), "12.34");
    EXPECT_EQ(CleanAssignedAmount("12.34", ',', kCents), "12.34");
    EXPECT_EQ(CleanAssignedAmount("12,34", '.', kCents), "12");
}

TEST(AmountValue, IsZeroWhereTheTextIsNoNumber) {
    EXPECT_EQ(AmountValue("Text1"), 0);
    EXPECT_EQ(AmountValue("."), 0);
    EXPECT_EQ(AmountValue(".75"), 0.75);
    EXPECT_EQ(AmountValue("5."), 5);
    EXPECT_EQ(AmountValue("-5"), -5);
}

TEST(Separators, ChangePlacesOnlyWhereTheCommaIsDecimal) {
    EXPECT_EQ(ExchangeSeparators("1,234.5", ','), "1.234,5");
    EXPECT_EQ(ExchangeSeparators("1,234.5", '.'), "1,234.5");
}

TEST(AmountKey, IsADecimalPointForBothSeparatorsWhereTheCommaIsDecimal) {
    EXPECT_EQ(AmountKey(U',', false, ','), '.');
    EXPECT_EQ(AmountKey(U'.', false, ','), '.');
}

TEST(AmountKey, IsNothingForACommaWhereThePointIsDecimal) {
    EXPECT_EQ(AmountKey(U',', false, '.'), '\0');
}

TEST(AmountKey, OfTheNumberPadIsADecimalPointWhateverItPrints) {
    EXPECT_EQ(AmountKey(U',', true, '.'), '.');
    EXPECT_EQ(AmountKey(U'.', true, ','), '.');
}

TEST(AmountKey, ReadsDigitsAndMinusSignsOfOtherScripts) {
    EXPECT_EQ(AmountKey(U'\uFF17', false, '.'), '7');
    EXPECT_EQ(AmountKey(U'\u0663', false, '.'), '3');
    EXPECT_EQ(AmountKey(U'\u2212', false, '.'), '-');
    EXPECT_EQ(AmountKey(U'x', false, '.'), '\0');
}

TEST(AdmittedKey, PassesPointAndMinusOnceAndOnlyWhereAllowed) {
    EXPECT_TRUE(AdmitsKey('.', "12", kCents));
    EXPECT_FALSE(AdmitsKey('.', "1.2", kCents));
    EXPECT_FALSE(AdmitsKey('.', "12", kWhole));
    EXPECT_TRUE(AdmitsKey('-', "12", kSigned));
    EXPECT_FALSE(AdmitsKey('-', "-12", kSigned));
    EXPECT_FALSE(AdmitsKey('-', "12", kCents));
    EXPECT_FALSE(AdmitsKey('\0', "12", kCents));
}

}  // namespace
}  // namespace ledgix::controls
