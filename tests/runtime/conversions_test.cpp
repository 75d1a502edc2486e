#include "conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "cases.h"
#include "error_of.h"

namespace ledgix::runtime {
namespace {

using nlohmann::json;
using test::CaseName;
using test::ErrorOf;

constexpr int kOverflow = 6;
constexpr int kTypeMismatch = 13;
constexpr int kInvalidNull = 94;

std::vector<json> NumberTexts(const char* list) {
    return test::CaseList(test::LoadCases("number_text.json").at(list));
}

// True when a text is a case's text or another that is as right.
bool IsAnswer(const json& wanted, const std::string& text) {
    if (wanted.at("text") == text)
        return true;
    const json also = wanted.value("also", json::array());
    return std::find(also.begin(), also.end(), json(text)) != also.end();
}

class DoubleToText : public testing::TestWithParam<json> {};
TEST_P(DoubleToText, IsAsListed) {
    const std::string text = ToText(GetParam().at("value").get<double>());
    EXPECT_TRUE(IsAnswer(GetParam(), text)) << text;
}
INSTANTIATE_TEST_SUITE_P(, DoubleToText, testing::ValuesIn(NumberTexts("double_to_text")), CaseName);

class SingleToText : public testing::TestWithParam<json> {};
TEST_P(SingleToText, IsAsListed) {
    const std::string text = ToText(GetParam().at("value").get<float>());
    EXPECT_TRUE(IsAnswer(GetParam(), text)) << text;
}
INSTANTIATE_TEST_SUITE_P(, SingleToText, testing::ValuesIn(NumberTexts("single_to_text")), CaseName);

class TextToLeadingNumber : public testing::TestWithParam<json> {};
TEST_P(TextToLeadingNumber, IsAsListed) {
    EXPECT_EQ(LeadingNumber(GetParam().at("text").get<std::string>()), GetParam().at("value").get<double>());
}
INSTANTIATE_TEST_SUITE_P(, TextToLeadingNumber, testing::ValuesIn(NumberTexts("leading_number")), CaseName);

class NumericTest : public testing::TestWithParam<json> {};
TEST_P(NumericTest, IsAsListed) {
    EXPECT_EQ(IsNumeric(GetParam().at("text").get<std::string>()), GetParam().at("numeric").get<bool>());
}
INSTANTIATE_TEST_SUITE_P(, NumericTest, testing::ValuesIn(NumberTexts("is_numeric")), CaseName);

// Converts the `value` of a case, a number or a text, and compares it with `result` or `error`.
template <class Convert>
void ExpectWholeNumber(const json& wanted, Convert convert) {
    const json& value = wanted.at("value");
    const auto run = [&] {
        return value.is_string() ? convert(value.get<std::string>()) : convert(value.get<double>());
    };
    const int error = wanted.value("error", 0);
    EXPECT_EQ(ErrorOf(run), error);
    if (error == 0) {
        EXPECT_EQ(run(), wanted.at("result").get<std::int64_t>());
    }
}

class To16Bit : public testing::TestWithParam<json> {};
TEST_P(To16Bit, IsAsListed) {
    ExpectWholeNumber(GetParam(), [](const auto& value) { return ToInt16(value); });
}
INSTANTIATE_TEST_SUITE_P(, To16Bit, testing::ValuesIn(NumberTexts("to_16_bit")), CaseName);

class To32Bit : public testing::TestWithParam<json> {};
TEST_P(To32Bit, IsAsListed) {
    ExpectWholeNumber(GetParam(), [](const auto& value) { return ToInt32(value); });
}
INSTANTIATE_TEST_SUITE_P(, To32Bit, testing::ValuesIn(NumberTexts("to_32_bit")), CaseName);

TEST(NumberToText, RoundsAtTheFifteenthDigit) {
    EXPECT_EQ(ToText(0.1 + 0.2), "0.3");
    EXPECT_EQ(ToText(999999999999999.9), "1E+15");
    EXPECT_EQ(ToText(1e100), "1E+100");
    EXPECT_EQ(ToText(-1e-300), "-1E-300");
    EXPECT_EQ(ToText(std::numeric_limits<double>::max()), "1.79769313486232E+308");
}

TEST(NumberToText, TakesAnExponentBelowATenThousandth) {
    EXPECT_EQ(ToText(0.0001), "0.0001");
    EXPECT_EQ(ToText(0.000099), "9.9E-05");
    EXPECT_EQ(ToText(-0.000015F), "-1.5E-05");
}

TEST(NumberToText, RefusesWhatIsNoNumber) {
    EXPECT_EQ(ErrorOf([] { ToText(std::numeric_limits<double>::infinity()); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToText(std::nan("")); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToText(-std::numeric_limits<float>::infinity()); }), kOverflow);
}

TEST(NumberToText, GivesEveryDigitOfAWholeNumber) {
    EXPECT_EQ(ToText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(ToText(std::int32_t{0}), "0");
}

TEST(TextToNumber, TakesAWholeTextOnly) {
    EXPECT_EQ(ParseNumber(" 1,234.50 "), 1234.5);
    EXPECT_EQ(ParseNumber("5-"), -5.0);
    EXPECT_EQ(ParseNumber("-.5e1"), -5.0);
    EXPECT_EQ(ParseNumber("1d2"), 100.0);
    EXPECT_EQ(ParseNumber("12 34"), std::nullopt);
    EXPECT_EQ(ParseNumber(",5"), std::nullopt);
    EXPECT_EQ(ParseNumber("1e+"), std::nullopt);
    EXPECT_EQ(ParseNumber("\xC3\xA9"), std::nullopt);
}

TEST(TextToNumber, HasNoNegativeZero) {
    EXPECT_FALSE(std::signbit(ParseNumber("-0").value()));
    EXPECT_FALSE(std::signbit(LeadingNumber("-0.0")));
}

TEST(TextToNumber, OverflowsBeyondADouble) {
    EXPECT_EQ(ErrorOf([] { ParseNumber("1e309"); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { LeadingNumber("-1e999 dollars"); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ParseNumber(std::string(400, '9')); }), kOverflow);
    EXPECT_FALSE(IsNumeric("1e309"));
}

TEST(TextToNumber, TakesWhatIsTooSmallForADoubleAsZero) {
    EXPECT_EQ(ParseNumber("1e-400"), 0.0);
    EXPECT_EQ(ParseNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(ParseNumber("0." + std::string(500, '0') + "1e+5"), 0.0);
    EXPECT_EQ(ParseNumber("1e-310"), 1e-310);
    EXPECT_EQ(ParseNumber("0e999"), 0.0);
}

TEST(LeadingNumbers, SkipEveryKindOfBlank) {
    EXPECT_EQ(LeadingNumber("\t1\r\n2 3"), 123.0);
    EXPECT_EQ(LeadingNumber("12%"), 12.0);
    EXPECT_EQ(LeadingNumber("+-5"), 0.0);
}

TEST(WholeNumbers, ComeFromEveryTypeThatHasANumber) {
    EXPECT_EQ(ToInt16(Variant(true)), -1);
    EXPECT_EQ(ToInt16(Variant(std::uint8_t{255})), 255);
    EXPECT_EQ(ToInt16(Variant(std::string(" 7 "))), 7);
    EXPECT_EQ(ToInt32(Variant(Currency{25000})), 2);
    EXPECT_EQ(ToInt32(Variant(Date{36526.6})), 36527);
    EXPECT_EQ(ToInt32(Variant(3.5F)), 4);
    EXPECT_EQ(ToInt32(Variant(Decimal{true, 1, {0, 0, 0, 25}})), -2);
}

TEST(WholeNumbers, RefuseWhatIsNoNumber) {
    EXPECT_EQ(ErrorOf([] { ToInt16(std::nan("")); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToInt16(Variant(std::int32_t{32768})); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { ToInt32(Variant(std::string("ten"))); }), kTypeMismatch);
}

TEST(Variants, OfNullAreAnErrorWhereAValueIsNeeded) {
    const Variant null = Null{};
    EXPECT_TRUE(IsNull(null));
    EXPECT_EQ(ErrorOf([&] { ToText(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToInt16(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToInt32(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToDouble(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToSingle(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToBoolean(null); }), kInvalidNull);
    EXPECT_EQ(ErrorOf([&] { ToDate(null); }), kInvalidNull);
}

TEST(Variants, OfBinaryAndGuidHaveNoNumber) {
    EXPECT_EQ(ErrorOf([] { ToDouble(Variant(Binary{1, 2})); }), kTypeMismatch);
    EXPECT_EQ(ErrorOf([] { ToDouble(Variant(Guid{})); }), kTypeMismatch);
}

TEST(Variants, BecomeTextByTheirType) {
    EXPECT_EQ(ToText(Variant(true)), "True");
    EXPECT_EQ(ToText(Variant(false)), "False");
    EXPECT_EQ(ToText(Variant(std::uint8_t{65})), "65");
    EXPECT_EQ(ToText(Variant(std::int16_t{-12})), "-12");
    EXPECT_EQ(ToText(Variant(6.85F)), "6.85");
    EXPECT_EQ(ToText(Variant(1234.5)), "1234.5");
    EXPECT_EQ(ToText(Variant(std::string("O'Brien"))), "O'Brien");
    EXPECT_EQ(ToText(Variant(Date{0.25})), "1899-12-30T06:00:00");
    EXPECT_EQ(ToText(Variant(Binary{0x00, 0xAB, 0x7F})), "00AB7F");
}

TEST(Variants, NarrowToASingleOrOverflow) {
    EXPECT_EQ(ToSingle(Variant(6.85)), 6.85F);
    EXPECT_EQ(ErrorOf([] { ToSingle(Variant(1e39)); }), kOverflow);
}

TEST(Variants, AreTrueWhenTheyAreNotZero) {
    EXPECT_TRUE(ToBoolean(Variant(-1.0)));
    EXPECT_FALSE(ToBoolean(Variant(std::int16_t{0})));
    EXPECT_TRUE(ToBoolean(Variant(std::string("TRUE"))));
    EXPECT_FALSE(ToBoolean(Variant(std::string("false"))));
    EXPECT_TRUE(ToBoolean(Variant(std::string("0.5"))));
    EXPECT_EQ(ErrorOf([] { ToBoolean(Variant(std::string("yes"))); }), kTypeMismatch);
}

TEST(Variants, BecomeDatesWithinTheCalendar) {
    EXPECT_EQ(ToDate(Variant(Date{1e9})), Date{1e9});
    EXPECT_EQ(ToDate(Variant(1.5)), Date{1.5});
    EXPECT_EQ(ErrorOf([] { ToDate(Variant(1e9)); }), kOverflow);
}

TEST(CurrencyText, HasUpToFourDecimals) {
    EXPECT_EQ(ToText(Currency{0}), "0");
    EXPECT_EQ(ToText(Currency{5}), "0.0005");
    EXPECT_EQ(ToText(Currency{-12345}), "-1.2345");
    EXPECT_EQ(ToText(Currency{1000000}), "100");
    EXPECT_EQ(ToText(Currency{std::numeric_limits<std::int64_t>::min()}), "-922337203685477.5808");
}

TEST(DecimalText, HasAllDigitsAndNoExponent) {
    EXPECT_EQ(ToText(Decimal{}), "0");
    EXPECT_EQ(ToText(Decimal{true, 3, {}}), "0");
    EXPECT_EQ(ToText(Decimal{true, 2, {0, 0, 0, 12345}}), "-123.45");
    EXPECT_EQ(ToText(Decimal{false, 2, {0, 0, 0, 12300}}), "123");
    EXPECT_EQ(ToText(Decimal{false, 28, {0, 0, 0, 1}}), "0.0000000000000000000000000001");
    EXPECT_EQ(ToText(Decimal{false, 0, {0, 0, 1, 0}}), "4294967296");
    EXPECT_EQ(ToText(Decimal{false, 0, {0, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}}), "79228162514264337593543950335");
}

TEST(DecimalNumber, IsTheNearestDouble) {
    EXPECT_EQ(ToDouble(Decimal{true, 2, {0, 0, 0, 12345}}), -123.45);
    EXPECT_EQ(ToDouble(Decimal{false, 0, {0, 1, 0, 0}}), 18446744073709551616.0);
}

TEST(GuidText, StandsInBracesAndGroups) {
    Guid guid;
    for (std::size_t i = 0; i < guid.bytes.size(); ++i)
        guid.bytes[i] = static_cast<std::uint8_t>(i * 17);
    EXPECT_EQ(ToText(guid), "{00112233-4455-6677-8899-AABBCCDDEEFF}");
}

}  // namespace
}  // namespace ledgix::runtime
