#include "profile_rows.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "error_of.h"

namespace ledgix::shell {
namespace {

using test::Json;

void AddProfile(model::clsProfiles& profiles, std::int32_t number, const std::string& name, bool saved = true) {
    model::clsProfile& profile = profiles.AddItem(number);
    profile.ProfileName = name;
    profile.Saved = saved;
}

// "P 1", "P 2"... with the numbers 1, 2...
void AddProfiles(model::clsProfiles& profiles, int count) {
    for (int i = 1; i <= count; ++i)
        AddProfile(profiles, i, "P " + std::to_string(i));
}

constexpr int kRowHeight = 255;
constexpr int kPanelHeight = 3000;

// Rows of as many profiles, each 375 apart from the next.
class ListOf {
public:
    explicit ListOf(int count) {
        AddProfiles(profiles, count);
        rows.LoadProfiles(&profiles);
    }

    model::clsProfiles profiles;
    ProfileRows rows{kRowHeight, kPanelHeight};
};

class Rows : public testing::TestWithParam<Json> {};

TEST_P(Rows, AreThoseOfTheSavedProfiles) {
    model::clsProfiles profiles;
    for (const Json& profile : GetParam().at("profiles"))
        AddProfile(profiles, profile.at("ProfileNumber"), profile.at("ProfileName"), profile.at("Saved"));
    ProfileRows rows(GetParam().at("rowHeight"), kPanelHeight);
    rows.LoadProfiles(&profiles);
    const Json& expected = GetParam().at("rows");
    ASSERT_EQ(rows.ShownCount(), static_cast<int>(expected.size()));
    for (int k = 0; k < rows.ShownCount(); ++k) {
        const ProfileRow row = rows.Row(k);
        const Json& wanted = expected.at(static_cast<std::size_t>(k));
        EXPECT_EQ(row.Caption, wanted.at("Caption"));
        EXPECT_EQ(row.Tag, wanted.at("Tag"));
        EXPECT_EQ(row.Top, wanted.at("Top"));
        EXPECT_TRUE(row.Visible);
        EXPECT_FALSE(row.FontUnderline);
        EXPECT_EQ(row.BackColor, 0xFFFFFF);
    }
}

std::vector<Json> MainWindowCases(const char* list) {
    return test::CaseList(test::LoadCases("main_window.json").at(list));
}

INSTANTIATE_TEST_SUITE_P(Loading, Rows, testing::ValuesIn(MainWindowCases("rows")), test::CaseName);

class ScrollBar : public testing::TestWithParam<Json> {};

TEST_P(ScrollBar, CoversTheRowsThatDoNotFit) {
    const ScrollRange range = ScrollRangeOf(GetParam().at("lastTop"), GetParam().at("lastHeight"),
                                            GetParam().at("panelHeight"), GetParam().at("rowHeight"));
    const Json& bar = GetParam().at("VScroll");
    EXPECT_EQ(range.visible, bar.at("Visible"));
    if (range.visible) {
        EXPECT_EQ(range.max, bar.at("Max"));
        EXPECT_EQ(range.min, bar.at("Min"));
        EXPECT_EQ(range.small_change, bar.at("SmallChange"));
        EXPECT_EQ(range.large_change, bar.at("LargeChange"));
        EXPECT_EQ(range.height, bar.at("Height"));
    }
}

INSTANTIATE_TEST_SUITE_P(Range, ScrollBar, testing::ValuesIn(MainWindowCases("scrollBar")), test::CaseName);

class ScrolledRow : public testing::TestWithParam<Json> {};

TEST_P(ScrolledRow, LiesHigherByWhatTheBarIsAboveItsMinimum) {
    EXPECT_EQ(RowTop(GetParam().at("row"), GetParam().at("rowHeight"), GetParam().at("Value"), GetParam().at("Min")),
              GetParam().at("Top"));
}

INSTANTIATE_TEST_SUITE_P(Tops, ScrolledRow, testing::ValuesIn(MainWindowCases("scrolledRows")), test::CaseName);

class Panel : public testing::TestWithParam<Json> {};

TEST_P(Panel, FollowsTheWindowsHeight) {
    EXPECT_EQ(PanelHeight(GetParam().at("windowHeight"), GetParam().at("panelTop")), GetParam().at("panelHeight"));
}

INSTANTIATE_TEST_SUITE_P(Heights, Panel, testing::ValuesIn(MainWindowCases("resize")), test::CaseName);

class Question : public testing::TestWithParam<Json> {};

TEST_P(Question, NamesTheProfile) {
    EXPECT_EQ(DeleteQuestion(GetParam().at("name").get<std::string>()), GetParam().at("text"));
    EXPECT_EQ(kDeleteQuestionStyle, GetParam().at("style"));
}

INSTANTIATE_TEST_SUITE_P(Delete, Question, testing::ValuesIn(MainWindowCases("deleteQuestion")), test::CaseName);

TEST(ProfileRows, OfNoCollectionAreNone) {
    ProfileRows rows(kRowHeight, kPanelHeight);
    rows.LoadProfiles(nullptr);
    EXPECT_EQ(rows.ShownCount(), 0);
    EXPECT_EQ(rows.UBound(), 0);
    EXPECT_FALSE(rows.Row(0).Visible);
    EXPECT_FALSE(rows.ScrollBar().visible);
    EXPECT_EQ(rows.iSelectMenu(), -1);
}

TEST(ProfileRows, AreHiddenAndNotDroppedWhenTheListGrowsShorter) {
    ListOf list(12);
    const ScrollRange range = list.rows.ScrollBar();
    EXPECT_TRUE(range.visible);
    for (int i = 3; i <= 12; ++i)
        list.profiles.Item("P" + std::to_string(i)).Saved = false;
    list.rows.LoadProfiles(&list.profiles);
    EXPECT_EQ(list.rows.ShownCount(), 2);
    EXPECT_EQ(list.rows.UBound(), 11);
    EXPECT_TRUE(list.rows.Row(1).Visible);
    EXPECT_FALSE(list.rows.Row(2).Visible);
    EXPECT_EQ(list.rows.Row(2).Caption, "P 3");
    EXPECT_EQ(list.rows.ScrollBar(), range);
}

TEST(ProfileRows, TakeTheNewTextsWhenLoadedAgain) {
    ListOf list(2);
    list.profiles.Item(1).ProfileName = "Renamed";
    AddProfile(list.profiles, 7, "Added");
    list.rows.LoadProfiles(&list.profiles);
    EXPECT_EQ(list.rows.ShownCount(), 3);
    EXPECT_EQ(list.rows.Caption(0), "Renamed");
    EXPECT_EQ(list.rows.Tag(2), "7");
}

TEST(ProfileRows, AreStackedFromTheTopWhenLoadedAgain) {
    ListOf list(20);
    list.rows.ScrollTo(3500, 3000);
    EXPECT_EQ(list.rows.Top(0), -380);
    list.rows.LoadProfiles(&list.profiles);
    EXPECT_EQ(list.rows.Top(0), 120);
}

TEST(ProfileRows, HaveAtMostOneSelected) {
    ListOf list(3);
    list.rows.SelectProfile(1);
    EXPECT_EQ(list.rows.iSelectMenu(), 1);
    EXPECT_EQ(list.rows.Row(1).BackColor, 0x80FFFF);
    EXPECT_EQ(list.rows.Row(0).BackColor, 0xFFFFFF);
    list.rows.DeSelectProfile(1);
    EXPECT_EQ(list.rows.iSelectMenu(), -1);
    EXPECT_EQ(list.rows.Row(1).BackColor, 0xFFFFFF);
}

TEST(ProfileRows, KeepTheSelectedIndexWhenLoadedAgain) {
    ListOf list(3);
    list.rows.SelectProfile(2);
    list.rows.LoadProfiles(&list.profiles);
    EXPECT_EQ(list.rows.iSelectMenu(), 2);
}

TEST(ProfileRows, HaveAtMostOneUnderlined) {
    ListOf list(3);
    list.rows.Underline(1);
    EXPECT_TRUE(list.rows.Row(1).FontUnderline);
    list.rows.Unhighlight(1);
    EXPECT_TRUE(list.rows.Row(1).FontUnderline);
    list.rows.Unhighlight(2);
    EXPECT_FALSE(list.rows.Row(1).FontUnderline);
    list.rows.Underline(2);
    list.rows.Unhighlight(-1);
    EXPECT_EQ(list.rows.UnderlinedRow(), -1);
}

TEST(ProfileRows, AreAnErrorOutsideOfTheArray) {
    ListOf list(3);
    EXPECT_ERROR(list.rows.Row(-1), 9);
    EXPECT_ERROR(list.rows.Tag(3), 9);
    EXPECT_ERROR(list.rows.SelectProfile(3), 9);
    EXPECT_ERROR(list.rows.DeSelectProfile(-1), 9);
    EXPECT_EQ(list.rows.Tag(2), "3");
}

TEST(ProfileRows, AreFoundByTheirProfileNumberAmongThoseShown) {
    ListOf list(3);
    EXPECT_EQ(list.rows.RowOf("2"), 1);
    EXPECT_EQ(list.rows.RowOf("4"), std::nullopt);
    list.profiles.Item(3).Saved = false;
    list.rows.LoadProfiles(&list.profiles);
    EXPECT_EQ(list.rows.RowOf("3"), std::nullopt);
}

TEST(ProfileRows, ThatExactlyFillThePanelNeedNoScrollBar) {
    ListOf list(8);
    list.rows.SetPanelHeight(3000);
    EXPECT_FALSE(list.rows.ScrollBar().visible);
    list.rows.SetPanelHeight(2999);
    EXPECT_TRUE(list.rows.ScrollBar().visible);
}

TEST(ProfileRows, HaveTheSameScrollRangeWhereverTheyAreScrolledTo) {
    ListOf list(20);
    const ScrollRange range = list.rows.ScrollBar();
    list.rows.ScrollTo(range.max, range.min);
    EXPECT_EQ(list.rows.ScrollBar(), range);
}

TEST(ProfileRows, EndAGapAboveThePanelsBottomAtTheEndOfTheRange) {
    ListOf list(10000);
    const ScrollRange range = list.rows.ScrollBar();
    EXPECT_EQ(range.max, 10000 * 375 + 120);
    list.rows.ScrollTo(range.max, range.min);
    EXPECT_EQ(list.rows.Top(9999) + kRowHeight + kRowGap, kPanelHeight);
}

TEST(ProfileRows, MoveAlsoWhenHidden) {
    ListOf list(20);
    list.profiles.Item(20).Saved = false;
    list.rows.LoadProfiles(&list.profiles);
    const int top = list.rows.Row(19).Top;
    list.rows.ScrollTo(3255, 3000);
    EXPECT_FALSE(list.rows.Row(19).Visible);
    EXPECT_EQ(list.rows.Row(19).Top, top - 255);
}

TEST(ProfileRows, AreScrolledNoFurtherThanNeededToShowOne) {
    ListOf list(20);
    EXPECT_EQ(list.rows.OffsetShowing(0), 0);
    EXPECT_EQ(list.rows.OffsetShowing(6), 0);
    EXPECT_EQ(list.rows.OffsetShowing(7), 120);
    const ScrollRange range = list.rows.ScrollBar();
    EXPECT_EQ(list.rows.OffsetShowing(19), range.max - range.min);
    list.rows.ScrollTo(range.max, range.min);
    EXPECT_EQ(list.rows.OffsetShowing(19), range.max - range.min);
    EXPECT_EQ(list.rows.OffsetShowing(3), 3 * 375);
}

TEST(ProfileRows, ShowTheirTopInAPanelThatIsLowerThanOne) {
    ListOf list(20);
    list.rows.SetPanelHeight(200);
    EXPECT_EQ(list.rows.OffsetShowing(3), 3 * 375);
}

TEST(ProfileRows, AreFoundByTheirHeightInThePanel) {
    ListOf list(3);
    EXPECT_EQ(list.rows.RowAt(0), std::nullopt);
    EXPECT_EQ(list.rows.RowAt(119), std::nullopt);
    EXPECT_EQ(list.rows.RowAt(120), 0);
    EXPECT_EQ(list.rows.RowAt(374), 0);
    EXPECT_EQ(list.rows.RowAt(375), std::nullopt);
    EXPECT_EQ(list.rows.RowAt(495), 1);
    EXPECT_EQ(list.rows.RowAt(870), 2);
    EXPECT_EQ(list.rows.RowAt(1245), std::nullopt);
    EXPECT_EQ(list.rows.RowAt(-30), std::nullopt);
    list.rows.ScrollTo(3375, 3000);
    EXPECT_EQ(list.rows.RowAt(120), 1);
}

TEST(ProfileRows, BeginToBeSeenWhereTheyEndBelowAHeight) {
    ListOf list(10000);
    EXPECT_EQ(list.rows.FirstRowBelow(0), 0);
    EXPECT_EQ(list.rows.FirstRowBelow(374), 0);
    EXPECT_EQ(list.rows.FirstRowBelow(375), 1);
    list.rows.ScrollTo(3000 + 375 * 5000, 3000);
    EXPECT_EQ(list.rows.FirstRowBelow(0), 5000);
    EXPECT_EQ(list.rows.FirstRowBelow(375 * 6000), 10000);
}

TEST(ProfileRows, TurnPagesOfAtLeastOneRow) {
    ListOf list(3);
    EXPECT_EQ(list.rows.RowsPerPage(), 8);
    list.rows.SetPanelHeight(200);
    EXPECT_EQ(list.rows.RowsPerPage(), 1);
}

}  // namespace
}  // namespace ledgix::shell
