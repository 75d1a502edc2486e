#include "version_text.h"

#include <gtest/gtest.h>

namespace ledgix::shell {
namespace {

TEST(VersionText, IsMajorAndMinorWhereShort) {
    EXPECT_EQ(ShortVersionText({2, 1, 7}), "Version 2.1");
}

TEST(VersionText, HasTheRevisionWhereFull) {
    EXPECT_EQ(FullVersionText({2, 1, 7}), "Version 2.1.7");
}

TEST(VersionText, ShowsARevisionOfZeroOnlyWhereFull) {
    EXPECT_EQ(ShortVersionText({3, 0, 0}), "Version 3.0");
    EXPECT_EQ(FullVersionText({3, 0, 0}), "Version 3.0.0");
}

TEST(VersionText, PadsNoNumber) {
    EXPECT_EQ(FullVersionText({10, 2, 123}), "Version 10.2.123");
}

}  // namespace
}  // namespace ledgix::shell
