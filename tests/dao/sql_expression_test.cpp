#include "sql_expression.h"

#include <gtest/gtest.h>

#include <limits>

#include "date_time.h"
#include "error_of.h"
#include "sql_parser.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

class NoRow : public Row {
public:
    Variant Value(std::size_t) const override { return Null{}; }
};

// The value of an expression without columns; a name stands for Null.
Variant Value(const std::string& expression) {
    const SelectStatement select = ParseSelect("select * from t where " + expression);
    return Evaluate(*select.where, NoRow());
}

TEST(SqlExpression, TheSmallestLongHasANegative) {
    class SmallestLong : public Row {
    public:
        Variant Value(std::size_t) const override { return std::numeric_limits<std::int32_t>::min(); }
    };
    const SelectStatement select = ParseSelect("select -n from t");
    EXPECT_EQ(Evaluate(*select.items[0].expression, SmallestLong()), Variant(2147483648.0));
}

TEST(SqlExpression, NumbersCompareWhateverTheirType) {
    EXPECT_EQ(Value("1 = 1.0"), Variant(true));
    EXPECT_EQ(Value("2 < 10"), Variant(true));
    EXPECT_EQ(Value("true = -1"), Variant(true));
}

TEST(SqlExpression, TextComparesWithoutCaseAndTrailingBlanks) {
    EXPECT_EQ(Value("'Abc' = 'aBC'"), Variant(true));
    EXPECT_EQ(Value("'abc ' = 'abc'"), Variant(true));
    EXPECT_EQ(Value("' abc' = 'abc'"), Variant(false));
    EXPECT_EQ(Value("'É' = 'é'"), Variant(true));
    EXPECT_EQ(Value("'b' > 'A'"), Variant(true));
}

TEST(SqlExpression, DatesCompareAsMoments) {
    EXPECT_EQ(Value("#01/01/1900# < #01/01/1900 00:00:01#"), Variant(true));
    EXPECT_EQ(Value("#01/01/1900# = 2"), Variant(true));
}

TEST(SqlExpression, TextAgainstANumberIsAMismatch) {
    EXPECT_ERROR(Value("'1' = 1"), ErrorNumber::kCriteriaMismatch);
    EXPECT_ERROR(Value("not 'x'"), ErrorNumber::kCriteriaMismatch);
    EXPECT_ERROR(Value("1 in (1.5, 'a')"), ErrorNumber::kCriteriaMismatch);
}

TEST(SqlExpression, NullSpreads) {
    EXPECT_EQ(Value("n = 1"), Variant(Null{}));
    EXPECT_EQ(Value("n <> n"), Variant(Null{}));
    EXPECT_EQ(Value("not n"), Variant(Null{}));
    EXPECT_EQ(Value("n + 1"), Variant(Null{}));
    EXPECT_EQ(Value("n like '*'"), Variant(Null{}));
    EXPECT_EQ(Value("1 between n and 2"), Variant(Null{}));
}

TEST(SqlExpression, AndAndOrDecideDespiteNull) {
    EXPECT_EQ(Value("n = 1 or true"), Variant(true));
    EXPECT_EQ(Value("true or n = 1"), Variant(true));
    EXPECT_EQ(Value("n = 1 and false"), Variant(false));
    EXPECT_EQ(Value("n = 1 and true"), Variant(Null{}));
    EXPECT_EQ(Value("n = 1 or false"), Variant(Null{}));
}

TEST(SqlExpression, IsNullIsNeverNull) {
    EXPECT_EQ(Value("n is null"), Variant(true));
    EXPECT_EQ(Value("n is not null"), Variant(false));
    EXPECT_EQ(Value("1 is null"), Variant(false));
}

TEST(SqlExpression, InFindsAnItem) {
    EXPECT_EQ(Value("2 in (1, 2)"), Variant(true));
    EXPECT_EQ(Value("3 in (1, 2)"), Variant(false));
    EXPECT_EQ(Value("3 not in (1, 2)"), Variant(true));
    EXPECT_EQ(Value("3 in (1, null)"), Variant(Null{}));
    EXPECT_EQ(Value("'B' in ('a', 'b')"), Variant(true));
}

TEST(SqlExpression, BetweenTakesItsBoundsInAnyOrder) {
    EXPECT_EQ(Value("2 between 1 and 3"), Variant(true));
    EXPECT_EQ(Value("2 between 3 and 1"), Variant(true));
    EXPECT_EQ(Value("1 between 1 and 3"), Variant(true));
    EXPECT_EQ(Value("0 between 1 and 3"), Variant(false));
    EXPECT_EQ(Value("0 not between 1 and 3"), Variant(true));
}

TEST(SqlExpression, LikeMatchesAPattern) {
    EXPECT_EQ(Value("'Harbour' like 'h*'"), Variant(true));
    EXPECT_EQ(Value("'Harbour' not like 'h*'"), Variant(false));
}

TEST(SqlExpression, ArithmeticIsInDoubles) {
    EXPECT_EQ(Value("7 / 2"), Variant(3.5));
    EXPECT_EQ(Value("1 + 2 * 3 - 4"), Variant(3.0));
    EXPECT_EQ(Value("-(2 + 3)"), Variant(-5.0));
    EXPECT_EQ(Value("-3"), Variant(-3));
    EXPECT_ERROR(Value("1 / 0"), ErrorNumber::kDivisionByZero);
    EXPECT_ERROR(Value("1E+300 * 1E+300"), ErrorNumber::kOverflow);
}

TEST(SqlExpression, JoiningTakesNullForEmpty) {
    EXPECT_EQ(Value("'a' & 1"), Variant(std::string("a1")));
    EXPECT_EQ(Value("n & 'b'"), Variant(std::string("b")));
    EXPECT_EQ(Value("n & n"), Variant(Null{}));
}

TEST(SqlExpression, ANullConditionDoesNotHold) {
    EXPECT_FALSE(Holds(*ParseSelect("select * from t where n").where, NoRow()));
    EXPECT_TRUE(Holds(*ParseSelect("select * from t where 7").where, NoRow()));
}

TEST(SqlExpression, NullSortsFirst) {
    EXPECT_LT(CompareForSort(Null{}, -1E300), 0);
    EXPECT_GT(CompareForSort(std::string(), Null{}), 0);
    EXPECT_EQ(CompareForSort(Null{}, Null{}), 0);
}

TEST(SqlExpression, WhatIsNoNumberSortsLast) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_GT(CompareForSort(nan, 1E300), 0);
    EXPECT_EQ(CompareForSort(nan, nan), 0);
}

}  // namespace
}  // namespace ledgix::dao
