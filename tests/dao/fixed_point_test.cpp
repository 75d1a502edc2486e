#include "fixed_point.h"

#include <gtest/gtest.h>

#include "conversions.h"

namespace ledgix::dao {
namespace {

// The number as a decimal of 28 digits, "none" when it is none.
std::string Decimal(std::string_view number, std::uint8_t scale, std::uint8_t precision = 28) {
    const auto decimal = ParseDecimal(number, precision, scale);
    if (!decimal)
        return "none";
    EXPECT_EQ(decimal->scale, scale);
    return runtime::ToText(*decimal);
}

std::string Currency(std::string_view number) {
    const auto currency = ParseCurrency(number);
    return currency ? runtime::ToText(*currency) : "none";
}

TEST(FixedPoint, KeepsDigitsThatADoubleWouldLose) {
    EXPECT_EQ(Decimal("1234567890123456789012345678", 0), "1234567890123456789012345678");
    EXPECT_EQ(Decimal("-0.0000000000000000000000000001", 28), "-0.0000000000000000000000000001");
    EXPECT_EQ(Currency("922337203685477.5807"), "922337203685477.5807");
    EXPECT_EQ(Currency("-922337203685477.5808"), "-922337203685477.5808");
}

TEST(FixedPoint, TakesHalvesToTheEvenNeighbour) {
    EXPECT_EQ(Decimal("2.5", 0), "2");
    EXPECT_EQ(Decimal("3.5", 0), "4");
    EXPECT_EQ(Decimal("0.5", 0), "0");
    EXPECT_EQ(Decimal("2.50000000000000000000000000001", 0), "3");
    EXPECT_EQ(Decimal("-9.995", 2), "-10");
    EXPECT_EQ(Currency("0.00005"), "0");
    EXPECT_EQ(Currency("0.00015"), "0.0002");
}

TEST(FixedPoint, UnderstandsSignsCommasBlanksAndExponents) {
    EXPECT_EQ(Decimal(" 1,234.5- ", 1), "-1234.5");
    EXPECT_EQ(Decimal("1.25E+3", 0), "1250");
    EXPECT_EQ(Decimal("1250d-3", 2), "1.25");
    EXPECT_EQ(Decimal("+.5", 1), "0.5");
    EXPECT_EQ(Decimal("007", 0), "7");
}

TEST(FixedPoint, ZeroHasNoSign) {
    EXPECT_FALSE(ParseDecimal("-0", 28, 2)->negative);
    EXPECT_FALSE(ParseDecimal("-0.001", 28, 2)->negative);
    EXPECT_EQ(ParseCurrency("-0")->ten_thousandths, 0);
}

TEST(FixedPoint, NumbersWithTooManyDigitsAreNone) {
    EXPECT_EQ(Decimal("99999", 0, 4), "none");
    EXPECT_EQ(Decimal("9999", 0, 4), "9999");
    EXPECT_EQ(Decimal("9999.5", 0, 4), "none");
    EXPECT_EQ(Decimal("100", 2, 4), "none");
    EXPECT_EQ(Decimal("1e28", 0), "none");
    EXPECT_EQ(Currency("922337203685477.5808"), "none");
    EXPECT_EQ(Currency("1e300"), "none");
}

TEST(FixedPoint, VerySmallNumbersAreZero) {
    EXPECT_EQ(Decimal("1e-300", 28), "0");
    EXPECT_EQ(Decimal("1e-99999999999999999999", 28), "0");
}

TEST(FixedPoint, WhatIsNoNumberIsNone) {
    for (const char* text : {"", "abc", "1.2.3", "1e999", "--1"}) {
        EXPECT_EQ(Decimal(text, 0), "none") << text;
        EXPECT_EQ(Currency(text), "none") << text;
    }
}

}  // namespace
}  // namespace ledgix::dao
