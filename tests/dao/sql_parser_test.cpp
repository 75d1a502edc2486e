#include "sql_parser.h"

#include <gtest/gtest.h>

#include "error_of.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(SqlParser, AStarAsksForAllColumns) {
    const SelectStatement select = ParseSelect("select * from Profiles");
    EXPECT_TRUE(select.items.empty());
    EXPECT_EQ(select.table, "Profiles");
    EXPECT_FALSE(select.where);
    EXPECT_TRUE(select.order.empty());
}

TEST(SqlParser, ItemsAreNamedAfterTheirColumnsOrAliases) {
    const SelectStatement select = ParseSelect("select upper, rate as percent, rate / 100 from tax_rates");
    ASSERT_EQ(select.items.size(), 3U);
    EXPECT_EQ(select.items[0].name, "upper");
    EXPECT_EQ(select.items[1].name, "percent");
    EXPECT_EQ(select.items[2].name, "Expr1002");
}

TEST(SqlParser, ATableMayHaveAnAlias) {
    EXPECT_EQ(ParseSelect("select * from Profiles as p where p.ProfileNumber = 1").alias, "p");
    EXPECT_EQ(ParseSelect("select * from [my table] t").table, "my table");
}

TEST(SqlParser, SortKeysAscendUnlessToldOtherwise) {
    const SelectStatement select = ParseSelect("select * from t order by a, b desc, c asc;");
    ASSERT_EQ(select.order.size(), 3U);
    EXPECT_FALSE(select.order[0].descending);
    EXPECT_TRUE(select.order[1].descending);
    EXPECT_FALSE(select.order[2].descending);
}

TEST(SqlParser, AndBindsTighterThanOr) {
    const SelectStatement select = ParseSelect("select * from t where a = 1 or b = 2 and c = 3");
    const auto& top = std::get<BinaryOperation>(select.where->node);
    EXPECT_EQ(top.op, BinaryOperator::kOr);
    EXPECT_EQ(std::get<BinaryOperation>(top.right->node).op, BinaryOperator::kAnd);
}

TEST(SqlParser, ParenthesesComeFirst) {
    const SelectStatement select = ParseSelect("select * from t where (a = 1 or b = 2) and c = 3");
    EXPECT_EQ(std::get<BinaryOperation>(select.where->node).op, BinaryOperator::kAnd);
}

TEST(SqlParser, OtherStatementsAreInvalid) {
    EXPECT_ERROR(ParseSelect("drop table Profiles"), ErrorNumber::kInvalidStatement);
    EXPECT_ERROR(ParseSelect(""), ErrorNumber::kInvalidStatement);
}

TEST(SqlParser, FaultsBearTheNumberOfTheirClause) {
    EXPECT_ERROR(ParseSelect("select *"), ErrorNumber::kSelectSyntax);
    EXPECT_ERROR(ParseSelect("select * from"), ErrorNumber::kFromSyntax);
    EXPECT_ERROR(ParseSelect("select * from t order a"), ErrorNumber::kOrderBySyntax);
    EXPECT_ERROR(ParseSelect("select * from t where"), ErrorNumber::kSyntax);
    EXPECT_ERROR(ParseSelect("select * from t where a = 1 b"), ErrorNumber::kSyntax);
    EXPECT_ERROR(ParseSelect("select * from t where (a = 1"), ErrorNumber::kSyntax);
    EXPECT_ERROR(ParseSelect("select * from t where a in 1"), ErrorNumber::kSyntax);
    EXPECT_ERROR(ParseSelect("select * from t where a between 1 or 2"), ErrorNumber::kSyntax);
    EXPECT_ERROR(ParseSelect("select * from t where a is 1"), ErrorNumber::kSyntax);
}

TEST(SqlParser, OnlyOneTableCanBeQueried) {
    EXPECT_ERROR(ParseSelect("select * from a, b"), ErrorNumber::kFeatureNotAvailable);
}

TEST(SqlParser, DeepNestingIsTooComplex) {
    const std::string deep = "select * from t where " + Repeated("(", 5000) + "a" + Repeated(")", 5000);
    EXPECT_ERROR(ParseSelect(deep), ErrorNumber::kTooComplex);
    EXPECT_ERROR(ParseSelect("select * from t where " + Repeated("not ", 5000) + "a"), ErrorNumber::kTooComplex);
    EXPECT_ERROR(ParseSelect("select * from t where " + Repeated("-", 5000) + "a"), ErrorNumber::kTooComplex);
}

TEST(SqlParser, LongChainsAreTooComplex) {
    EXPECT_ERROR(ParseSelect("select * from t where a = 1" + Repeated(" or a = 1", 5000)), ErrorNumber::kTooComplex);
    EXPECT_NO_THROW(ParseSelect("select * from t where a = 1" + Repeated(" or a = 1", 400)));
}

TEST(SqlParser, SelectStatementsAreToldFromTableNames) {
    EXPECT_TRUE(IsSelect("select * from t"));
    EXPECT_TRUE(IsSelect("  SELECT\r\n* from t"));
    EXPECT_FALSE(IsSelect("Profiles"));
    EXPECT_FALSE(IsSelect("selection"));
    EXPECT_FALSE(IsSelect(""));
}

}  // namespace
}  // namespace ledgix::dao
