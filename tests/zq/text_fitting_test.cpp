#include "text_fitting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "characters.h"
#include "font_widths.h"

namespace ledgix::zq {
namespace {

constexpr double kSize = 10;

std::string PartOf(const std::string& text, double width) {
    return text.substr(0, FittingLength(text, width, kSize, false));
}

double WidthOf(const std::string& text) {
    return TextWidth(text, kSize, false);
}

TEST(FittingLength, TakesAWholeTextThatFitsExactly) {
    EXPECT_EQ(PartOf("two words", WidthOf("two words")), "two words");
}

TEST(FittingLength, BreaksBeforeTheWordThatDoesNotFit) {
    EXPECT_EQ(PartOf("two words", WidthOf("two words") - 0.01), "two ");
}

TEST(FittingLength, LetsBlanksHangOverTheEdge) {
    EXPECT_EQ(PartOf("end.    Next", WidthOf("end.")), "end.    ");
    const std::string blanks(500, ' ');
    EXPECT_EQ(PartOf(blanks + "x", 20), blanks);
}

TEST(FittingLength, EndsBehindALineBreakOfAnyKind) {
    EXPECT_EQ(PartOf("a\r\nb", 100), "a\r\n");
    EXPECT_EQ(PartOf("a\nb", 100), "a\n");
    EXPECT_EQ(PartOf("a\rb", 100), "a\r");
    EXPECT_EQ(PartOf("\r\n\r\n", 100), "\r\n");
}

TEST(FittingLength, TakesTheLineBreakBehindAFullLineWithHangingBlanks) {
    EXPECT_EQ(PartOf("full  \r\nnext", WidthOf("full")), "full  \r\n");
}

TEST(FittingLength, BreaksInsideAWordThatIsWiderThanTheLine) {
    EXPECT_EQ(PartOf(std::string(50, 'W'), WidthOf("WWW")), "WWW");
    EXPECT_EQ(PartOf("a " + std::string(50, 'W'), WidthOf("WWW")), "a ");
}

TEST(FittingLength, TakesOneCharacterWhereNoneFits) {
    EXPECT_EQ(PartOf("WW", 1), "W");
    EXPECT_EQ(PartOf("\xC3\x89t\xC3\xA9", 0), "\xC3\x89");
    EXPECT_EQ(PartOf("\xF0\x9F\x8F\xA0\xF0\x9F\x8F\xA0", 0), "\xF0\x9F\x8F\xA0");
}

TEST(FittingLength, KeepsAnAccentWithItsLetter) {
    EXPECT_EQ(PartOf("e\xCC\x81"
                     "e",
                     1),
              "e\xCC\x81");
}

TEST(FittingLength, GivesNothingForNothing) {
    EXPECT_EQ(FittingLength("", 100, kSize, false), 0u);
}

// Words, blanks, breaks, letters of all lengths and broken bytes, at random.
std::string RandomText(std::mt19937& random) {
    static const std::string pieces[] = {"a",
                                         "deductable",
                                         " ",
                                         "  ",
                                         "\r\n",
                                         "\r",
                                         "\n",
                                         ".",
                                         "-13874",
                                         "W",
                                         "\xC3\xA9",
                                         "\xE2\x82\xAC",
                                         "\xF0\x9F\x8F\xA0",
                                         "\xFF",
                                         "\xE2\x82",
                                         "\t",
                                         "e\xCC\x81"};
    std::string text;
    const std::size_t count = random() % 60;
    for (std::size_t i = 0; i < count; ++i)
        text += pieces[random() % std::size(pieces)];
    return text;
}

bool EndsInsideWord(const std::string& part, const std::string& rest) {
    return !rest.empty() && !IsBlank(char32_t(part.back())) && part.back() != '\r' && part.back() != '\n';
}

void CheckPart(const std::string& part, const std::string& rest, double width) {
    ASSERT_FALSE(part.empty());
    EXPECT_FALSE(part.ends_with('\r') && rest.starts_with('\n'));
    if (!EndsInsideWord(part, rest))
        return;
    EXPECT_EQ(part.find_first_of(" \t\r\n"), part.npos) << "a word broken though a line could begin with it";
    EXPECT_GT(TextWidth(part + rest.substr(0, CharacterAt(rest, 0).size), kSize, false), width);
}

std::vector<std::size_t> CharacterStarts(const std::string& text) {
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at < text.size(); at += CharacterAt(text, at).size)
        starts.push_back(at);
    return starts;
}

TEST(FittingLength, LosesAndBreaksNothingOfRandomTexts) {
    std::mt19937 random(20260214);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = RandomText(random);
        const double width = 1 + static_cast<double>(random() % 200);
        const std::vector<std::size_t> starts = CharacterStarts(text);
        std::string rest = text;
        std::string joined;
        while (!rest.empty()) {
            const std::string part = PartOf(rest, width);
            rest.erase(0, part.size());
            CheckPart(part, rest, width);
            joined += part;
            if (!rest.empty()) {
                EXPECT_TRUE(std::binary_search(starts.begin(), starts.end(), joined.size())) << "half a character";
            }
        }
        ASSERT_EQ(joined, text);
    }
}

// Nothing but blanks may stand beyond the edge, unless not even one character fits.
TEST(FittingLength, NeverExceedsTheWidth) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = RandomText(random);
        const double width = 12 + static_cast<double>(random() % 150);
        const std::string part = PartOf(text, width);
        const std::string line = part.substr(0, part.find_last_not_of(" \t\r\n") + 1);
        EXPECT_LE(TextWidth(line, kSize, false), width + 1e-6) << line;
    }
}

TEST(FittingLength, DividesALongMemoInNoTime) {
    std::string memo;
    while (memo.size() < 1000000)
        memo += "income and expenses ";
    const auto start = std::chrono::steady_clock::now();
    std::string_view rest = memo;
    std::size_t parts = 0;
    for (; !rest.empty(); ++parts)
        rest.remove_prefix(FittingLength(rest, 480, kSize, false));
    EXPECT_GT(parts, 9000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(WrappedLines, AreReadyToBeDrawn) {
    EXPECT_EQ(WrappedLines("one two\r\nthree ", WidthOf("three"), kSize, false),
              (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(WrappedLines("", 100, kSize, false), std::vector<std::string>{""});
}

}  // namespace
}  // namespace ledgix::zq
