#include "sql_like.h"

#include <gtest/gtest.h>

#include <string>

namespace ledgix::dao {
namespace {

TEST(SqlLike, WithoutWildcardsTheWholeTextMustMatch) {
    EXPECT_TRUE(MatchesPattern("Unit", "unit"));
    EXPECT_FALSE(MatchesPattern("Unit 3", "unit"));
}

TEST(SqlLike, AStarStandsForAnyCharacters) {
    EXPECT_TRUE(MatchesPattern("Unit 3, 88 Kowhai Road", "unit*road"));
    EXPECT_TRUE(MatchesPattern("", "*"));
    EXPECT_TRUE(MatchesPattern("abcabd", "*abd"));
    EXPECT_FALSE(MatchesPattern("abcabd", "*abc"));
}

TEST(SqlLike, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(MatchesPattern("é", "?"));
    EXPECT_FALSE(MatchesPattern("", "?"));
}

TEST(SqlLike, ANumberSignStandsForOneDigit) {
    EXPECT_TRUE(MatchesPattern("88 Road", "## road"));
    EXPECT_FALSE(MatchesPattern("x8 Road", "## road"));
}

TEST(SqlLike, AListStandsForOneOfItsCharacters) {
    EXPECT_TRUE(MatchesPattern("b", "[a-c]"));
    EXPECT_FALSE(MatchesPattern("d", "[a-c]"));
    EXPECT_TRUE(MatchesPattern("d", "[!a-c]"));
    EXPECT_TRUE(MatchesPattern("x", "[abx]"));
    EXPECT_TRUE(MatchesPattern("*", "[*]"));
    EXPECT_FALSE(MatchesPattern("a", "[*]"));
}

TEST(SqlLike, AnUnclosedListMatchesNothing) {
    EXPECT_FALSE(MatchesPattern("a", "[a"));
}

TEST(SqlLike, ManyStarsTakeNoMoreThanQuadraticTime) {
    std::string pattern;
    for (int i = 0; i < 200; ++i)
        pattern += "a*";
    EXPECT_FALSE(MatchesPattern(std::string(5000, 'a'), pattern + "b"));
}

}  // namespace
}  // namespace ledgix::dao
