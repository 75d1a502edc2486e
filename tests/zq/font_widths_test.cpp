#include "font_widths.h"

#include <gtest/gtest.h>

#include <string>

namespace ledgix::zq {
namespace {

TEST(AdvanceWidth, IsThatOfTheTypeface) {
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'0', false), 1139 / 2048.0);
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'W', false), 1933 / 2048.0);
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'i', false), 455 / 2048.0);
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'i', true), 569 / 2048.0);
    EXPECT_DOUBLE_EQ(AdvanceWidth(U' ', true), 569 / 2048.0);
}

TEST(AdvanceWidth, IsTheSameForAllFigures) {
    for (const bool bold : {false, true})
        for (char32_t figure = U'0'; figure <= U'9'; ++figure)
            EXPECT_DOUBLE_EQ(AdvanceWidth(figure, bold), AdvanceWidth(U'0', bold));
}

TEST(AdvanceWidth, OfALetterWithAnAccentIsTheLetters) {
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'\u00E9', false), AdvanceWidth(U'e', false));
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'\u0101', true), AdvanceWidth(U'a', true));
    EXPECT_DOUBLE_EQ(AdvanceWidth(U'\u0160', false), AdvanceWidth(U'S', false));
}

TEST(AdvanceWidth, KnowsTheSignsOfCurrencies) {
    for (const char32_t sign : {U'$', U'\u00A3', U'\u00A5', U'\u20AC'})
        EXPECT_DOUBLE_EQ(AdvanceWidth(sign, false), 1139 / 2048.0);
}

TEST(AdvanceWidth, OfOtherCharactersIsALikelyOne) {
    EXPECT_EQ(AdvanceWidth(U'\u0301', false), 0);
    EXPECT_EQ(AdvanceWidth(U'\u6771', false), 1);
    EXPECT_GT(AdvanceWidth(U'\u05D0', false), 0.5);
}

TEST(TextWidth, SumsUpCharactersAtTheSize) {
    EXPECT_DOUBLE_EQ(TextWidth("10", 10, false), 20 * 1139 / 2048.0);
    EXPECT_DOUBLE_EQ(TextWidth("\xC3\xA9", 8, false), 8 * AdvanceWidth(U'e', false));
    EXPECT_EQ(TextWidth("", 10, true), 0);
}

}  // namespace
}  // namespace ledgix::zq
