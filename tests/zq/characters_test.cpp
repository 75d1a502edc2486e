#include "characters.h"

#include <gtest/gtest.h>

namespace ledgix::zq {
namespace {

std::string Bytes(std::initializer_list<int> bytes) {
    std::string text;
    for (const int byte : bytes)
        text.push_back(static_cast<char>(byte));
    return text;
}

TEST(CharacterAt, ReadsSequencesOfOneToFourBytes) {
    const std::string text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0";
    EXPECT_EQ(CharacterAt(text, 0).code_point, U'a');
    EXPECT_EQ(CharacterAt(text, 1).code_point, U'\u00E9');
    EXPECT_EQ(CharacterAt(text, 3).code_point, U'\u20AC');
    EXPECT_EQ(CharacterAt(text, 6).code_point, U'\U0001F3E0');
    EXPECT_EQ(CharacterAt(text, 6).size, 4u);
}

TEST(CharacterAt, TakesEachByteOfInvalidUtf8ByItself) {
    for (const std::string& text :
         {Bytes({0x80, 'a'}), Bytes({0xC3, 'a'}), Bytes({0xC0, 0x80}), Bytes({0xE0, 0x80, 0x80}), Bytes({0xE2, 0x82}),
          Bytes({0xED, 0xA0, 0x80}), Bytes({0xF4, 0x90, 0x80, 0x80}), Bytes({0xF5, 0x80, 0x80, 0x80}), Bytes({0xFF})}) {
        EXPECT_EQ(CharacterAt(text, 0).size, 1u);
        EXPECT_EQ(CharacterAt(text, 0).code_point, U'\uFFFD');
    }
}

TEST(LineBreakAt, TakesCrLfAsOneBreak) {
    EXPECT_EQ(LineBreakAt("\r\na", 0), 2u);
    EXPECT_EQ(LineBreakAt("\ra", 0), 1u);
    EXPECT_EQ(LineBreakAt("\n\r", 0), 1u);
    EXPECT_EQ(LineBreakAt("\r", 0), 1u);
    EXPECT_EQ(LineBreakAt("a\n", 0), 0u);
}

TEST(TerminalColumns, AreNoneForMarksAndTwoForWideLetters) {
    EXPECT_EQ(TerminalColumns(U'a'), 1);
    EXPECT_EQ(TerminalColumns(U'\u00E9'), 1);
    EXPECT_EQ(TerminalColumns(U'\u0301'), 0);
    EXPECT_EQ(TerminalColumns(U'\u6771'), 2);
    EXPECT_EQ(TerminalColumns(U'\U0001F3E0'), 2);
}

TEST(OneLine, DropsBlanksAndBreaksAtTheEnd) {
    EXPECT_EQ(OneLine("worth 0 \r\n"), "worth 0");
    EXPECT_EQ(OneLine("  Per Month"), "  Per Month");
    EXPECT_EQ(OneLine(" \r\n"), "");
}

TEST(OneLine, HasABlankForOtherBreaksAndControlCharacters) {
    EXPECT_EQ(OneLine("a\r\nb\tc\x1B[2Jd"), "a b c [2Jd");
    EXPECT_EQ(OneLine("a\xC2\x85"
                      "b"),
              "a b");
}

TEST(OneLine, TurnsBlanksOfSpecialWidthsIntoNoBreakSpaces) {
    EXPECT_EQ(OneLine("1\xE2\x80\xAF"
                      "234"),
              "1\xC2\xA0"
              "234");
}

TEST(OneLine, ShowsInvalidBytesAsReplacementCharacters) {
    EXPECT_EQ(OneLine("a\xFF"), "a\xEF\xBF\xBD");
}

}  // namespace
}  // namespace ledgix::zq
