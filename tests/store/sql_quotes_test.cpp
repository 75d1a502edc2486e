#include "sql_quotes.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "error_of.h"

namespace ledgix::store {
namespace {

using nlohmann::json;
using test::ErrorOf;

std::string Fixed(std::string sql) {
    return FixSQLQuotes(sql);
}

int ErrorOfFixing(std::string sql) {
    return ErrorOf([&] { FixSQLQuotes(sql); });
}

class FixSQLQuotesCase : public testing::TestWithParam<json> {};

TEST_P(FixSQLQuotesCase, GivesTheResultAndLeavesItInTheArgument) {
    auto sql = GetParam().at("sql").get<std::string>();
    if (GetParam().contains("error")) {
        EXPECT_EQ(ErrorOfFixing(sql), GetParam().at("error").get<int>());
        return;
    }
    const auto wanted = GetParam().at("result").get<std::string>();
    EXPECT_EQ(FixSQLQuotes(sql), wanted);
    EXPECT_EQ(sql, wanted);
}

INSTANTIATE_TEST_SUITE_P(, FixSQLQuotesCase, testing::ValuesIn(test::CaseList(test::LoadCases("fix_sql_quotes.json"))),
                         test::CaseName);

TEST(SqlWords, AreReplacedWhereverTheyStand) {
    EXPECT_EQ(Fixed("update T set Flag = true, Other = false"), "update T set Flag = -1, Other = 0");
    EXPECT_EQ(Fixed("where name = 'untrue'"), "where name = 'un-1'");
    EXPECT_EQ(Fixed("tfalserue"), "t0rue");
    EXPECT_EQ(Fixed("trfalseue"), "tr0ue");
}

TEST(SqlWords, AreTakenLetterByLetter) {
    EXPECT_EQ(Fixed("True TRUE False FALSE"), "True TRUE False FALSE");
}

TEST(SqlApostrophes, OfAnEvenNumberStay) {
    EXPECT_EQ(Fixed("where a = 'O'Brien and b = 3"), "where a = 'O'Brien and b = 3");
    EXPECT_EQ(Fixed("a'b'c"), "a'b'c");
    EXPECT_EQ(Fixed(""), "");
}

TEST(SqlApostrophes, OpenAValueWithinThreeCharactersOfASign) {
    EXPECT_EQ(Fixed("where a =  'x"), "where a =  'x");
    EXPECT_EQ(Fixed("where a =   'x"), "where a =   ''x");
    EXPECT_EQ(Fixed("where a <>'x"), "where a <>'x");
    EXPECT_EQ(Fixed("where a > 'x"), "where a > 'x");
    EXPECT_EQ(Fixed("where a like 'x"), "where a like 'x");
    EXPECT_EQ(Fixed("where a like  'x"), "where a like  ''x");
    EXPECT_EQ(Fixed("where a LIKE 'x"), "where a LIKE ''x");
}

TEST(SqlApostrophes, CloseAValueOnlyWithFiveCharactersBehind) {
    EXPECT_EQ(Fixed("value' and"), "value'' and");
    EXPECT_EQ(Fixed("value' and "), "value' and ");
    EXPECT_EQ(Fixed("value'  an"), "value''  an");
    EXPECT_EQ(Fixed("value'  and"), "value'  and");
    EXPECT_EQ(Fixed("value' or b"), "value' or b");
    EXPECT_EQ(Fixed("value' orchard"), "value'' orchard");
    EXPECT_EQ(Fixed("value' order"), "value' order");
    EXPECT_EQ(Fixed("value' AND b"), "value'' AND b");
}

TEST(SqlApostrophes, AtTheEndCloseTheLastValue) {
    EXPECT_EQ(Fixed("value'"), "value'");
}

TEST(SqlApostrophes, NearTheStartAreAnInvalidArgument) {
    EXPECT_EQ(ErrorOfFixing("a'bcdef"), 5);
    EXPECT_EQ(ErrorOfFixing("ab'cdef"), 5);
    EXPECT_EQ(ErrorOfFixing("='x"), 5);
    EXPECT_EQ(Fixed("abc'def"), "abc''def");
    EXPECT_EQ(Fixed("'abcdef"), "''abcdef");
}

TEST(SqlApostrophes, NearTheStartAreReachedByDoublingToo) {
    // The first one is doubled, which moves the second from position 2 to 3.
    EXPECT_EQ(ErrorOfFixing("''abc'def"), 5);
}

TEST(SqlApostrophes, NearTheStartAreAnErrorAfterTheWordsAreReplaced) {
    std::string sql = "a'b true";
    EXPECT_EQ(ErrorOf([&] { FixSQLQuotes(sql); }), 5);
    EXPECT_EQ(sql, "a'b -1");
}

TEST(SqlApostrophes, AreCountedInCharactersAndNotInBytes) {
    EXPECT_EQ(ErrorOfFixing("éa'bcdef"), 5);
    EXPECT_EQ(ErrorOfFixing("€'bcdef"), 5);
    EXPECT_EQ(Fixed("where nm=éé'abc"), "where nm=éé'abc");
    EXPECT_EQ(Fixed("where nm=ééé'abc"), "where nm=ééé''abc");
    EXPECT_EQ(Fixed("value' or é"), "value' or é");
    EXPECT_EQ(Fixed("value'ééé"), "value''ééé");
}

TEST(SqlApostrophes, ForgetTheCallBefore) {
    std::string sql = "where a = 'O'Brien'";
    FixSQLQuotes(sql);
    EXPECT_EQ(sql, "where a = 'O''Brien'");
    FixSQLQuotes(sql);
    EXPECT_EQ(sql, "where a = 'O''Brien'");
}

}  // namespace
}  // namespace ledgix::store
