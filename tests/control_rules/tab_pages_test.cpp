#include "tab_pages.h"

#include <gtest/gtest.h>

namespace ledgix::controls {
namespace {

TabTable FramesOf(const std::string& tabs, const std::string& frames) {
    TabTable table;
    table.SetTabs(tabs);
    table.SetFrames(frames);
    return table;
}

TEST(PageSteps, ShowTheCurrentPageAndHideTheOthers) {
    TabTable table = FramesOf("A|B|C|", "f1|f2|f3|");
    table.SetCurrentTab(2);
    const std::vector<PageStep> expected{{"f1", false, {}, {}}, {"f2", true, {}, {}}, {"f3", false, {}, {}}};
    EXPECT_EQ(PageSteps(table, {}), expected);
}

TEST(PageSteps, PassOverTabsWithoutFrame) {
    const std::vector<PageStep> expected{{"f2", false, {}, {}}};
    EXPECT_EQ(PageSteps(FramesOf("A|B|C|", "|f2|"), {}), expected);
}

TEST(PageSteps, PlaceOnlyTheCurrentPage) {
    const std::vector<PageStep> expected{{"f1", true, 240, 480}, {"f2", false, {}, {}}};
    EXPECT_EQ(PageSteps(FramesOf("A|B|", "f1|f2|"), {.frame_top = 480, .frame_left = 240}), expected);
}

TEST(PageSteps, TakeMinusOneAndZeroForNoPlace) {
    const std::vector<PageStep> top_only{{"f1", true, {}, -2}};
    EXPECT_EQ(PageSteps(FramesOf("A|", "f1|"), {.frame_top = -2, .frame_left = 0}), top_only);
    const std::vector<PageStep> left_only{{"f1", true, 1, {}}};
    EXPECT_EQ(PageSteps(FramesOf("A|", "f1|"), {.frame_top = -1, .frame_left = 1}), left_only);
}

TEST(PageSteps, AreNoneWithoutFramesAndWhileHidden) {
    EXPECT_TRUE(PageSteps(FramesOf("A|B|", ""), {}).empty());
    EXPECT_TRUE(PageSteps(FramesOf("A|B|", "f1|f2|"), {.hidden = true}).empty());
}

}  // namespace
}  // namespace ledgix::controls
