#include "appearance_choice.h"

#include <gtest/gtest.h>

namespace ledgix::shell {
namespace {

constexpr double kWhite = 1;
constexpr double kBlack = 0;
const char* const kDarkSettings = "[Settings]\ngtk-application-prefer-dark-theme=1\n";

TEST(Appearance, IsWhatTheUserChoseWhateverTheDesktopSays) {
    EXPECT_EQ(ChooseTone({"light", "Adwaita-dark", kDarkSettings, kBlack}), Tone::kLight);
    EXPECT_EQ(ChooseTone({"dark", "Adwaita", "", kWhite}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"DARK", "", "", kWhite}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"Light", "", "", kBlack}), Tone::kLight);
}

TEST(Appearance, IgnoresAChoiceThatIsNone) {
    EXPECT_EQ(ChooseTone({"blue", "", "", kWhite}), Tone::kLight);
    EXPECT_EQ(ChooseTone({"blue", "", "", kBlack}), Tone::kDark);
}

TEST(Appearance, IsDarkWithADarkTheme) {
    EXPECT_EQ(ChooseTone({"", "Adwaita:dark", "", kWhite}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"", "Yaru-Dark", "", kWhite}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"", "Darkness", "", kWhite}), Tone::kLight);
}

TEST(Appearance, IsDarkWhereTheDesktopPrefersIt) {
    EXPECT_EQ(ChooseTone({"", "", kDarkSettings, kWhite}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"", "Adwaita", "[Settings]\r\ngtk-application-prefer-dark-theme = TRUE\r\n", kWhite}),
              Tone::kDark);
}

TEST(Appearance, TakesTheLastOfTwoPreferences) {
    EXPECT_EQ(ChooseTone({"", "",
                          "gtk-application-prefer-dark-theme=1\n"
                          "gtk-application-prefer-dark-theme=0\n",
                          kWhite}),
              Tone::kLight);
}

TEST(Appearance, DoesNotReadOtherSettingsAsAPreference) {
    EXPECT_EQ(ChooseTone({"", "", "#gtk-application-prefer-dark-theme=1\ngtk-theme-name=1\n", kWhite}), Tone::kLight);
    EXPECT_EQ(ChooseTone({"", "", "gtk-application-prefer-dark-theme=false\n", kWhite}), Tone::kLight);
}

TEST(Appearance, FollowsThePlatformWhereNothingIsSaid) {
    EXPECT_EQ(ChooseTone({"", "", "", kWhite}), Tone::kLight);
    EXPECT_EQ(ChooseTone({"", "", "", kBlack}), Tone::kDark);
    EXPECT_EQ(ChooseTone({"", "", "", 0.51}), Tone::kLight);
    EXPECT_EQ(ChooseTone({"", "", "", 0.49}), Tone::kDark);
}

}  // namespace
}  // namespace ledgix::shell
