#include "title_parts.h"

#include <gtest/gtest.h>

#include "error_of.h"

namespace ledgix::shell {
namespace {

using Colour = TitlePart::Colour;

bool Installed(const std::string&) {
    return true;
}

bool Missing(const std::string&) {
    return false;
}

bool Failing(const std::string&) {
    runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument);
}

void ExpectPart(const TitlePart& part, const std::string& text, const std::string& font, int points, Colour colour) {
    EXPECT_EQ(part.text, text);
    EXPECT_EQ(part.font, font);
    EXPECT_EQ(part.points, points);
    EXPECT_TRUE(part.bold);
    EXPECT_EQ(part.colour, colour);
}

TEST(SplashTitle, HasThreePartsOfTheirOwnFontsAndColours) {
    const std::vector<TitlePart> title = SplashTitle(Installed);
    ASSERT_EQ(title.size(), 3U);
    ExpectPart(title[0], "Van", "Comic Sans MS", 36, {255, 0, 0});
    ExpectPart(title[1], "treo", "Arial", 36, {0, 0, 0});
    ExpectPart(title[2], "Ledgix", "Courier New", 40, {0, 0, 255});
}

TEST(SplashTitle, StandsAtItsPlaces) {
    const std::vector<TitlePart> title = SplashTitle(Installed);
    ASSERT_EQ(title.size(), 3U);
    EXPECT_EQ(title[0].x, 1800);
    EXPECT_EQ(title[0].y, 200);
    EXPECT_FALSE(title[0].continues);
    EXPECT_TRUE(title[1].continues);
    EXPECT_EQ(title[1].y, 150);
    EXPECT_EQ(title[2].x, 1800);
    EXPECT_EQ(title[2].y, 1000);
    EXPECT_FALSE(title[2].continues);
}

TEST(SplashTitle, TakesArialWhereCourierNewIsMissing) {
    ExpectPart(SplashTitle(Missing).at(2), "Ledgix", "Arial", 40, {0, 0, 255});
}

TEST(SplashTitle, AsksForCourierNewOnly) {
    std::vector<std::string> asked;
    SplashTitle([&asked](const std::string& font) {
        asked.push_back(font);
        return true;
    });
    EXPECT_EQ(asked, std::vector<std::string>{"Courier New"});
}

TEST(SplashTitle, PassesOtherErrorsOn) {
    EXPECT_ERROR(SplashTitle(Failing), runtime::ErrorNumber::kInvalidArgument);
}

TEST(AboutTitle, HasThreePartsOfOneSize) {
    const std::vector<TitlePart> title = AboutTitle(Installed);
    ASSERT_EQ(title.size(), 3U);
    ExpectPart(title[0], "Van", "Comic Sans MS", 28, {255, 0, 0});
    ExpectPart(title[1], "treo", "Arial", 28, {0, 0, 0});
    ExpectPart(title[2], "Ledgix", "Courier New", 28, {0, 0, 255});
}

TEST(AboutTitle, StandsAtItsPlaces) {
    const std::vector<TitlePart> title = AboutTitle(Installed);
    ASSERT_EQ(title.size(), 3U);
    EXPECT_EQ(title[0].x, 1800);
    EXPECT_EQ(title[0].y, 0);
    EXPECT_TRUE(title[1].continues);
    EXPECT_EQ(title[1].y, 90);
    EXPECT_EQ(title[2].x, 1900);
    EXPECT_EQ(title[2].y, 600);
}

TEST(AboutTitle, KeepsTheFontStillSetWhereCourierNewIsMissing) {
    ExpectPart(AboutTitle(Missing).at(2), "Ledgix", "Arial", 28, {0, 0, 255});
}

TEST(AboutTitle, IgnoresErrorsFromTheThirdFontOn) {
    ExpectPart(AboutTitle(Failing).at(2), "Ledgix", "Arial", 28, {0, 0, 255});
}

}  // namespace
}  // namespace ledgix::shell
