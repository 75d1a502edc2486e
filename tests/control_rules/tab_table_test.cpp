#include "tab_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "error_of.h"

namespace ledgix::controls {
namespace {

constexpr int kSubscript = 9;
constexpr int kOverflow = 6;

std::string Captions(const TabTable& table) {
    std::string captions;
    for (const TabTable::Tab& tab : table.list()) {
        captions += tab.caption + ";";
    }
    return captions;
}

// "2 5": the tabs for which `is` holds.
template <typename Is>
std::string Numbers(const TabTable& table, Is is) {
    std::string numbers;
    for (int number = 1; number <= table.count(); ++number) {
        if (is(table.tab(number))) {
            numbers += (numbers.empty() ? "" : " ") + std::to_string(number);
        }
    }
    return numbers;
}

std::string Selected(const TabTable& table) {
    return Numbers(table, [](const TabTable::Tab& tab) { return tab.selected; });
}

std::string Disabled(const TabTable& table) {
    return Numbers(table, [](const TabTable::Tab& tab) { return !tab.enabled; });
}

TabTable Tabs(const std::string& text) {
    TabTable table;
    table.SetTabs(text);
    return table;
}

TEST(TabTable, StartsWithThreeTabsAndNoFrames) {
    const TabTable table;
    EXPECT_EQ(table.tabs(), "Tab1|Tab2|Tab3|");
    EXPECT_EQ(table.frames(), "");
    EXPECT_EQ(Captions(table), "Tab1;Tab2;Tab3;");
    EXPECT_EQ(table.current_tab(), 1);
    EXPECT_EQ(Selected(table), "1");
    EXPECT_EQ(Disabled(table), "");
}

TEST(TabTable, TabsWithoutClosingBarBehaveAsWithIt) {
    const TabTable table = Tabs("Income|Expenses");
    EXPECT_EQ(table.tabs(), "Income|Expenses|");
    EXPECT_EQ(Captions(table), "Income;Expenses;");
}

TEST(TabTable, EmptyTabsAreOneTab) {
    const TabTable table = Tabs("");
    EXPECT_EQ(table.tabs(), "Tab1|");
    EXPECT_EQ(Captions(table), "Tab1;");
}

TEST(TabTable, ABarAloneIsOneTabWithoutCaption) {
    EXPECT_EQ(Captions(Tabs("|")), ";");
}

TEST(TabTable, KeepsAmpersandsAndCharactersBeyondAscii) {
    EXPECT_EQ(Captions(Tabs("Profit & Loss|Dépôt|")), "Profit & Loss;Dépôt;");
}

TEST(TabTable, FrameNamesGoToTheTabsInOrder) {
    TabTable table = Tabs("A|B|C|");
    table.SetFrames("f1||f3|f4|");
    EXPECT_EQ(table.tab(1).frame_name, "f1");
    EXPECT_EQ(table.tab(2).frame_name, "");
    EXPECT_EQ(table.tab(3).frame_name, "f3");
    EXPECT_EQ(table.frames(), "f1||f3|f4|");
}

TEST(TabTable, FrameTextBehindTheLastBarIsIgnoredButKept) {
    TabTable table = Tabs("A|B|");
    table.SetFrames("f1|f2");
    EXPECT_EQ(table.tab(2).frame_name, "");
    EXPECT_EQ(table.frames(), "f1|f2");
}

TEST(TabTable, FramesOutliveNewTabs) {
    TabTable table;
    table.SetFrames("f1|f2|");
    table.SetTabs("A|B|");
    EXPECT_EQ(table.tab(2).frame_name, "f2");
}

TEST(TabTable, SettingTabsEnablesAllAndSelectsTheFirst) {
    TabTable table = Tabs("A|B|C|");
    table.SetCurrentTab(2);
    table.SetTabEnabled(3, false);
    table.SetTabs("A|B|C|");
    EXPECT_EQ(Selected(table), "1");
    EXPECT_EQ(Disabled(table), "");
}

TEST(TabTable, SettingFramesEnablesAllAndSelectsTheFirst) {
    TabTable table = Tabs("A|B|C|");
    table.SetCurrentTab(2);
    table.SetTabEnabled(3, false);
    table.SetFrames("f1|");
    EXPECT_EQ(table.current_tab(), 1);
    EXPECT_EQ(Selected(table), "1");
    EXPECT_EQ(Disabled(table), "");
}

TEST(TabTable, ExactlyTheCurrentTabIsSelected) {
    TabTable table = Tabs("A|B|C|");
    EXPECT_TRUE(table.SetCurrentTab(3));
    EXPECT_EQ(Selected(table), "3");
    EXPECT_EQ(table.Choose(2), 3);
    EXPECT_EQ(Selected(table), "2");
}

TEST(TabTable, ADisabledTabIsNotSelected) {
    TabTable table = Tabs("A|B|C|");
    table.SetTabEnabled(2, false);
    EXPECT_FALSE(table.SetCurrentTab(2));
    EXPECT_EQ(table.Choose(2), 0);
    EXPECT_EQ(Selected(table), "1");
}

TEST(TabTable, DisablingTheCurrentTabHasNoEffect) {
    TabTable table = Tabs("A|B|");
    EXPECT_FALSE(table.SetTabEnabled(1, false));
    EXPECT_EQ(Disabled(table), "");
}

TEST(TabTable, ChoosingTheCurrentTabOrNoneChangesNothing) {
    TabTable table = Tabs("A|B|");
    EXPECT_EQ(table.Choose(1), 0);
    EXPECT_EQ(table.Choose(0), 0);
    EXPECT_EQ(table.current_tab(), 1);
}

TEST(TabTable, ANumberThatNoTabHasIsASubscriptError) {
    TabTable table = Tabs("A|B|");
    for (const int number : {-1, 0, 3}) {
        EXPECT_ERROR(table.tab(number), kSubscript) << number;
        EXPECT_ERROR(table.SetCurrentTab(number), kSubscript) << number;
        EXPECT_ERROR(table.SetTabEnabled(number, true), kSubscript) << number;
    }
    EXPECT_EQ(table.current_tab(), 1);
}

TEST(TabTable, HoldsAsManyTabsAsA16BitNumberCounts) {
    EXPECT_EQ(Tabs(std::string(32767, '|')).count(), 32767);
    EXPECT_ERROR(Tabs(std::string(32768, '|')), kOverflow);
}

TEST(TabNeighbours, PassOverDisabledTabsAndStopAtTheEnds) {
    TabTable table = Tabs("A|B|C|D|");
    table.SetTabEnabled(2, false);
    table.SetTabEnabled(4, false);
    EXPECT_EQ(table.NeighbourOf(1, 1), 3);
    EXPECT_EQ(table.NeighbourOf(3, -1), 1);
    EXPECT_EQ(table.NeighbourOf(3, 1), 3);
    EXPECT_EQ(table.NeighbourOf(1, -1), 1);
    EXPECT_EQ(table.FirstEnabled(), 1);
    EXPECT_EQ(table.LastEnabled(), 3);
}

TEST(TabNeighbours, GoRoundInACircle) {
    TabTable table = Tabs("A|B|C|");
    table.SetCurrentTab(2);
    table.SetTabEnabled(1, false);
    EXPECT_EQ(table.NextInCircle(1), 3);
    EXPECT_EQ(table.NextInCircle(-1), 3);
    table.SetCurrentTab(3);
    EXPECT_EQ(table.NextInCircle(1), 2);
    EXPECT_EQ(Tabs("A|").NextInCircle(1), 1);
}

}  // namespace
}  // namespace ledgix::controls
