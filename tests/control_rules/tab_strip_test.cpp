#include "tab_strip.h"

#include <gtest/gtest.h>

namespace ledgix::controls {
namespace {

TEST(TabWidth, IsTheWidthLessOneRoundedDownToWholeTabs) {
    EXPECT_EQ(TabWidth(301, 3), 100);
    EXPECT_EQ(TabWidth(303, 3), 100);
    EXPECT_EQ(TabWidth(300, 3), 99);
    EXPECT_EQ(TabWidth(301, 1), 300);
}

TEST(TabWidth, IsZeroWithoutRoom) {
    EXPECT_EQ(TabWidth(3, 3), 0);
    EXPECT_EQ(TabWidth(1, 1), 0);
    EXPECT_EQ(TabWidth(0, 3), 0);
}

TEST(TabAt, FindsTheTabUnderThePress) {
    EXPECT_EQ(TabAt(0, 5, 301, 3), 1);
    EXPECT_EQ(TabAt(50, 5, 301, 3), 1);
    EXPECT_EQ(TabAt(150, 5, 301, 3), 2);
    EXPECT_EQ(TabAt(299, 5, 301, 3), 3);
}

TEST(TabAt, GivesBordersInTurnToTheTabBeforeAndBehind) {
    EXPECT_EQ(TabAt(100, 5, 401, 4), 1);
    EXPECT_EQ(TabAt(200, 5, 401, 4), 3);
    EXPECT_EQ(TabAt(300, 5, 401, 4), 3);
}

TEST(TabAt, TakesAPositionBetweenPixels) {
    EXPECT_EQ(TabAt(99.5, 5, 401, 4), 1);
    EXPECT_EQ(TabAt(100.5, 5, 401, 4), 2);
}

TEST(TabAt, TakesTheLastTabToTheRightOfIt) {
    EXPECT_EQ(TabAt(302, 5, 303, 3), 3);
    EXPECT_EQ(TabAt(5000, 5, 303, 3), 3);
}

TEST(TabAt, TakesOnlyTheTop20Pixels) {
    EXPECT_EQ(TabAt(150, 0, 301, 3), 2);
    EXPECT_EQ(TabAt(150, 19, 301, 3), 2);
    EXPECT_EQ(TabAt(150, 19.9, 301, 3), 2);
    EXPECT_EQ(TabAt(150, 20, 301, 3), 0);
    EXPECT_EQ(TabAt(150, -1, 301, 3), 0);
    EXPECT_EQ(TabAt(-1, 5, 301, 3), 0);
}

TEST(TabAt, FindsNoTabWithoutWidth) {
    EXPECT_EQ(TabAt(1, 5, 3, 3), 0);
}

}  // namespace
}  // namespace ledgix::controls
