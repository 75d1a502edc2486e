#include "sql_token.h"

#include <gtest/gtest.h>

#include "date_time.h"
#include "error_of.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;

Variant LiteralOf(std::string_view text) {
    const std::vector<Token> tokens = Tokenize(text);
    EXPECT_EQ(tokens.size(), 2U) << text;
    EXPECT_EQ(tokens.front().kind, Token::Kind::kLiteral) << text;
    return tokens.front().value;
}

Variant Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return runtime::ToDate(runtime::CivilTime{year, month, day, hour, minute, second});
}

TEST(SqlToken, WordsAreKnownInAnyCase) {
    EXPECT_TRUE(Tokenize("SeLeCt").front().IsWord("select"));
    EXPECT_FALSE(Tokenize("[select]").front().IsWord("select"));
}

TEST(SqlToken, BracketsMakeANameOfAnything) {
    const std::vector<Token> tokens = Tokenize("[order of the day]");
    EXPECT_EQ(tokens.front().kind, Token::Kind::kBracketedName);
    EXPECT_EQ(tokens.front().text, "order of the day");
}

TEST(SqlToken, WholeNumbersAreLongs) {
    EXPECT_EQ(LiteralOf("2147483647"), Variant(2147483647));
}

TEST(SqlToken, NumbersBeyondALongAreDoubles) {
    EXPECT_EQ(LiteralOf("2147483648"), Variant(2147483648.0));
}

TEST(SqlToken, NumbersWithAPointOrAnExponentAreDoubles) {
    EXPECT_EQ(LiteralOf("19.5"), Variant(19.5));
    EXPECT_EQ(LiteralOf(".5"), Variant(0.5));
    EXPECT_EQ(LiteralOf("1E+3"), Variant(1000.0));
}

TEST(SqlToken, NumbersThatRunIntoLettersAreRefused) {
    EXPECT_ERROR(Tokenize("12abc"), ErrorNumber::kSyntax);
    EXPECT_ERROR(Tokenize("1.2.3"), ErrorNumber::kSyntax);
}

TEST(SqlToken, DelimitersInTextAreDoubled) {
    EXPECT_EQ(LiteralOf("'O''Brien'"), Variant(std::string("O'Brien")));
    EXPECT_EQ(LiteralOf("\"say \"\"no\"\"\""), Variant(std::string("say \"no\"")));
    EXPECT_EQ(LiteralOf("''"), Variant(std::string()));
}

TEST(SqlToken, TextKeepsOtherCharacters) {
    EXPECT_EQ(LiteralOf("'#[a] é'"), Variant(std::string("#[a] é")));
}

TEST(SqlToken, TextThatDoesNotEndIsRefused) {
    EXPECT_ERROR(Tokenize("'abc"), ErrorNumber::kSyntax);
}

TEST(SqlToken, DatesAreMonthDayYear) {
    EXPECT_EQ(LiteralOf("#01/02/1900#"), Moment(1900, 1, 2));
    EXPECT_EQ(LiteralOf("#12/31/2026 23:59:58#"), Moment(2026, 12, 31, 23, 59, 58));
    EXPECT_EQ(LiteralOf("#2/14/2026 8:15 PM#"), Moment(2026, 2, 14, 20, 15));
}

TEST(SqlToken, DatesMayBeIso) {
    EXPECT_EQ(LiteralOf("#2026-02-14#"), Moment(2026, 2, 14));
    EXPECT_EQ(LiteralOf("#2026-02-14 20:15:30#"), Moment(2026, 2, 14, 20, 15, 30));
}

TEST(SqlToken, TwoDigitYearsBelongTo1930To2029) {
    EXPECT_EQ(LiteralOf("#1/1/29#"), Moment(2029, 1, 1));
    EXPECT_EQ(LiteralOf("#1/1/30#"), Moment(1930, 1, 1));
}

TEST(SqlToken, ATimeAloneIsOnDayZero) {
    EXPECT_EQ(LiteralOf("#6:00#"), Variant(runtime::Date{0.25}));
}

TEST(SqlToken, DatesThatDoNotExistAreRefused) {
    EXPECT_ERROR(Tokenize("#02/30/2026#"), ErrorNumber::kSyntax);
    EXPECT_ERROR(Tokenize("#1/1/2026 25:00#"), ErrorNumber::kSyntax);
    EXPECT_ERROR(Tokenize("##"), ErrorNumber::kSyntax);
    EXPECT_ERROR(Tokenize("#1/1/2026"), ErrorNumber::kSyntax);
}

TEST(SqlToken, PairsOfSignsAreOneSymbol) {
    EXPECT_TRUE(Tokenize("<>").front().IsSymbol("<>"));
    EXPECT_TRUE(Tokenize("<=").front().IsSymbol("<="));
    EXPECT_TRUE(Tokenize("< =").front().IsSymbol("<"));
}

TEST(SqlToken, StrangeCharactersAreRefused) {
    EXPECT_ERROR(Tokenize("select ?"), ErrorNumber::kSyntax);
    EXPECT_ERROR(Tokenize(std::string_view("a\0b", 3)), ErrorNumber::kSyntax);
}

}  // namespace
}  // namespace ledgix::dao
