#include "text.h"

#include <gtest/gtest.h>

#include <map>

namespace ledgix::runtime {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// Every Unicode character, surrogates left out.
std::u32string AllCharacters() {
    std::u32string all;
    for (char32_t c = 0; c <= 0x10FFFF; ++c)
        if (c < 0xD800 || c > 0xDFFF)
            all.push_back(c);
    return all;
}

std::string Replaced(std::string_view bytes) {
    return ToUtf8(ToUtf32(bytes));
}

std::string Times(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += kReplacement;
    return text;
}

TEST(Utf8, CarriesEveryCharacter) {
    const std::u32string all = AllCharacters();
    EXPECT_TRUE(ToUtf32(ToUtf8(all)) == all);
}

TEST(Utf8, CountsCharactersAndNotBytes) {
    EXPECT_EQ(ToUtf32("né€😀").size(), 4U);
}

TEST(Utf8, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(Replaced("a\xFFz"), "a" + Times(1) + "z");
    EXPECT_EQ(Replaced("a\x80z"), "a" + Times(1) + "z");
    EXPECT_EQ(Replaced("\xC3"), Times(1));
    EXPECT_EQ(Replaced("\xC3z"), Times(1) + "z");
    EXPECT_EQ(Replaced("\xE2\x82"), Times(1));
    EXPECT_EQ(Replaced("\xF5\x80\x80\x80"), Times(4));
}

TEST(Utf8, ReplacesOverlongFormsAndSurrogates) {
    EXPECT_EQ(Replaced("\xC0\x80"), Times(2));
    EXPECT_EQ(Replaced("\xE0\x80\x80"), Times(1));
    EXPECT_EQ(Replaced("\xF0\x80\x80\x80"), Times(1));
    EXPECT_EQ(Replaced("\xED\xA0\x80"), Times(1));
    EXPECT_EQ(Replaced("\xF4\x90\x80\x80"), Times(1));
}

TEST(Utf16, CarriesEveryCharacter) {
    const std::string all = ToUtf8(AllCharacters());
    EXPECT_TRUE(Utf16ToUtf8(ToUtf16(all)) == all);
}

TEST(Utf16, HasPairsBeyondTheFirstPlane) {
    EXPECT_TRUE(ToUtf16("😀") == u"\xD83D\xDE00");
}

TEST(Utf16, ReplacesUnpairedSurrogates) {
    EXPECT_EQ(Utf16ToUtf8(std::u16string{u'a', 0xD83D}), "a" + Times(1));
    EXPECT_EQ(Utf16ToUtf8(std::u16string{0xD83D, u'a'}), Times(1) + "a");
    EXPECT_EQ(Utf16ToUtf8(std::u16string{0xDE00, 0xD83D}), Times(2));
}

TEST(CodePage, CarriesEveryByte) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    EXPECT_EQ(ToCodePage1252(CodePage1252ToUtf8(bytes)), bytes);
}

TEST(CodePage, HasTheLettersOfWesternEurope) {
    EXPECT_EQ(ToCodePage1252("café €"), "caf\xE9 \x80");
    EXPECT_EQ(CodePage1252ToUtf8("\x8A\x9F\xFF"), "ŠŸÿ");
}

TEST(CodePage, PutsAQuestionMarkForWhatItLacks) {
    EXPECT_EQ(ToCodePage1252("a→😀z"), "a??z");
    EXPECT_TRUE(FitsCodePage1252("café €"));
    EXPECT_FALSE(FitsCodePage1252("→"));
}

TEST(CaseFolding, CoversTheLettersOfEurope) {
    EXPECT_EQ(FoldCase("PROPERTY.MDB"), "property.mdb");
    EXPECT_EQ(FoldCase("ÀÉÖØÞŸ"), "àéöøþÿ");
    EXPECT_EQ(FoldCase("ĀČĹŇŊŽ"), "āčĺňŋž");
    EXPECT_EQ(FoldCase("ΑΣΩ"), "ασω");
    EXPECT_EQ(FoldCase("ЂАЯ"), "ђая");
}

TEST(CaseFolding, LeavesEverythingElse) {
    EXPECT_EQ(FoldCase("àß×÷123→😀"), "àß×÷123→😀");
    EXPECT_EQ(FoldCase("ıĸŉž"), "ıĸŉž");
}

TEST(CaseFolding, IsDoneOnce) {
    for (char32_t c = 0; c < 0x3000; ++c)
        EXPECT_EQ(FoldCase(FoldCase(c)), FoldCase(c)) << static_cast<unsigned>(c);
}

TEST(Comparison, DisregardsCase) {
    EXPECT_TRUE(EqualsIgnoringCase("Café", "CAFÉ"));
    EXPECT_FALSE(EqualsIgnoringCase("cafe", "café"));
    EXPECT_LT(CompareIgnoringCase("abc", "ABD"), 0);
    EXPECT_GT(CompareIgnoringCase("B", "a"), 0);
    EXPECT_LT(CompareIgnoringCase("ab", "ABC"), 0);
    EXPECT_GT(CompareIgnoringCase("abc", ""), 0);
    EXPECT_EQ(CompareIgnoringCase("", ""), 0);
}

TEST(Comparison, OrdersTheKeysOfAMap) {
    std::map<std::string, int, LessIgnoringCase> bands{{"Table", 1}};
    EXPECT_EQ(bands.count("tABLE"), 1U);
    EXPECT_FALSE(bands.emplace("TABLE", 2).second);
}

TEST(Replacing, GoesFromLeftToRight) {
    EXPECT_EQ(ReplaceAll("falsehood false", "false", "0"), "0hood 0");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("'", "'", "''"), "''");
    EXPECT_EQ(ReplaceAll("False", "false", "0"), "False");
    EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

}  // namespace
}  // namespace ledgix::runtime
