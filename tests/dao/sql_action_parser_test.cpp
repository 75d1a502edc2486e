#include <gtest/gtest.h>

#include "error_of.h"
#include "sql_parser.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;

InsertStatement Insert(std::string_view text) {
    return std::get<InsertStatement>(ParseAction(text));
}
UpdateStatement Update(std::string_view text) {
    return std::get<UpdateStatement>(ParseAction(text));
}
DeleteStatement Delete(std::string_view text) {
    return std::get<DeleteStatement>(ParseAction(text));
}

Variant LiteralIn(const ExpressionPtr& expression) {
    return std::get<Literal>(expression->node).value;
}

TEST(SqlActionParser, AnInsertNamesColumnsAndValues) {
    const InsertStatement insert = Insert("Insert into Tax_Rates (upper, [rate]) values (38000, 19.5)");
    EXPECT_EQ(insert.table, "Tax_Rates");
    ASSERT_EQ(insert.columns.size(), 2U);
    EXPECT_EQ(insert.columns[0].name, "upper");
    EXPECT_EQ(insert.columns[1].name, "rate");
    ASSERT_EQ(insert.values.size(), 2U);
    EXPECT_EQ(LiteralIn(insert.values[0]), Variant(38000));
    EXPECT_EQ(LiteralIn(insert.values[1]), Variant(19.5));
}

TEST(SqlActionParser, AnInsertMayLeaveTheColumnsOut) {
    EXPECT_TRUE(Insert("INSERT INTO t VALUES (1)").columns.empty());
}

TEST(SqlActionParser, InsertedValuesMayBeCalculated) {
    EXPECT_TRUE(std::holds_alternative<BinaryOperation>(Insert("insert into t values ((1 + 2) * 3)").values[0]->node));
}

TEST(SqlActionParser, AnUpdateSetsColumnsOneByOne) {
    const UpdateStatement update = Update("update [Profile Property] set a = 0, [b c] = a + 1 where a is null;");
    EXPECT_EQ(update.table, "Profile Property");
    ASSERT_EQ(update.items.size(), 2U);
    EXPECT_EQ(update.items[0].column.name, "a");
    EXPECT_EQ(update.items[1].column.name, "b c");
    EXPECT_TRUE(std::holds_alternative<IsNullTest>(update.where->node));
}

TEST(SqlActionParser, AnUpdateWithoutConditionMeansEveryRow) {
    EXPECT_FALSE(Update("update t set a = #01/01/1900#").where);
}

TEST(SqlActionParser, ColumnsMayBearTheTable) {
    EXPECT_EQ(Update("update Profiles set Profiles.ExpRent = 1").items[0].column.table, "Profiles");
    EXPECT_EQ(Insert("insert into t (t.[a]) values (1)").columns[0].table, "t");
}

TEST(SqlActionParser, ADeleteMayHaveAStar) {
    EXPECT_EQ(Delete("delete from profiles where ProfileNumber = 3").table, "profiles");
    EXPECT_EQ(Delete("DELETE * FROM [Tax_Rates];").table, "Tax_Rates");
    EXPECT_FALSE(Delete("delete from t").where);
}

TEST(SqlActionParser, OtherStatementsAreInvalid) {
    EXPECT_ERROR(ParseAction("drop table Profiles"), ErrorNumber::kInvalidStatement);
    EXPECT_ERROR(ParseAction("Profiles"), ErrorNumber::kInvalidStatement);
    EXPECT_ERROR(ParseAction(""), ErrorNumber::kInvalidStatement);
}

TEST(SqlActionParser, ASelectIsNotExecuted) {
    EXPECT_ERROR(ParseAction("select * from Profiles"), ErrorNumber::kSelectExecuted);
}

TEST(SqlActionParser, FaultsOfAnInsertAre3134) {
    for (const char* text :
         {"insert t values (1)", "insert into", "insert into t", "insert into t (a values (1)",
          "insert into t () values (1)", "insert into t (a) (1)", "insert into t (a) values 1",
          "insert into t (a) values (1", "insert into t (a,) values (1)", "insert into t (a) values (1) where a = 1",
          "insert into t (a) values (1); x", "insert into t (1) values (1)"})
        EXPECT_ERROR(ParseAction(text), ErrorNumber::kInsertSyntax) << text;
}

TEST(SqlActionParser, FaultsOfAnUpdateAre3144) {
    for (const char* text : {"update", "update t", "update t set", "update t set a", "update t set a 1",
                             "update t set a = 1,", "update t set 1 = a", "update set a = 1"})
        EXPECT_ERROR(ParseAction(text), ErrorNumber::kUpdateSyntax) << text;
}

TEST(SqlActionParser, FaultsOfADeleteAreThoseOfItsFromClause) {
    for (const char* text : {"delete", "delete t", "delete from", "delete from t u v", "delete from 1"})
        EXPECT_ERROR(ParseAction(text), ErrorNumber::kFromSyntax) << text;
}

TEST(SqlActionParser, FaultsInExpressionsAre3075) {
    for (const char* text :
         {"insert into t values ()", "insert into t values (1 +)", "update t set a =", "update t set a = 1 b",
          "update t set a = 1 where", "delete from t where a = 1 b", "insert into t values ('O'Brien',3)"})
        EXPECT_ERROR(ParseAction(text), ErrorNumber::kSyntax) << text;
}

TEST(SqlActionParser, ReservedWordsNeedBracketsAsNames) {
    EXPECT_ERROR(ParseAction("update t set set = 1"), ErrorNumber::kUpdateSyntax);
    EXPECT_EQ(Update("update t set [set] = 1").items[0].column.name, "set");
    EXPECT_ERROR(ParseAction("insert into values values (1)"), ErrorNumber::kInsertSyntax);
}

TEST(SqlActionParser, DeepNestingIsTooComplex) {
    std::string deep(5000, '(');
    deep += '1';
    deep.append(5000, ')');
    EXPECT_ERROR(ParseAction("insert into t values (" + deep + ")"), ErrorNumber::kTooComplex);
    EXPECT_ERROR(ParseAction("update t set a = " + deep), ErrorNumber::kTooComplex);
    EXPECT_ERROR(ParseAction("delete from t where " + deep), ErrorNumber::kTooComplex);
}

TEST(SqlActionParser, TooManyOperatorsInAllExpressionsAreTooComplex) {
    std::string sum = "1";
    for (int i = 0; i < 600; ++i)
        sum += "+1";
    EXPECT_NO_THROW(ParseAction("update t set a = " + sum));
    EXPECT_ERROR(ParseAction("update t set a = " + sum + ", b = " + sum), ErrorNumber::kTooComplex);
}

}  // namespace
}  // namespace ledgix::dao
