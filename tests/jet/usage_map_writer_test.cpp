#include "usage_map_writer.h"

#include <gtest/gtest.h>

#include "byte_order.h"
#include "hex.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Generation;

TEST(UsageMapWriter, MakesEmptyMapsOfTheUsualSize) {
    EXPECT_EQ(jet::MakeUsageMap(jet::FormatOf(Generation::kJet3)), ByteList(133));
    EXPECT_EQ(jet::MakeUsageMap(jet::FormatOf(Generation::kJet4)), ByteList(69));
}

TEST(UsageMapWriter, PutsPagesInAndTakesThemOut) {
    ByteList map = Hex("00 08 00 00 00 00 00");
    EXPECT_TRUE(jet::SetInUsageMap(map, 8, true));
    EXPECT_TRUE(jet::SetInUsageMap(map, 18, true));
    EXPECT_TRUE(jet::SetInUsageMap(map, 23, true));
    EXPECT_EQ(map, Hex("00 08 00 00 00 01 84"));
    EXPECT_TRUE(jet::SetInUsageMap(map, 18, false));
    EXPECT_EQ(map, Hex("00 08 00 00 00 01 80"));
}

TEST(UsageMapWriter, SaysWhenAMapDoesNotReachToAPage) {
    const ByteList empty = Hex("00 08 00 00 00 00 00");
    ByteList map = empty;
    EXPECT_FALSE(jet::SetInUsageMap(map, 7, true));
    EXPECT_FALSE(jet::SetInUsageMap(map, 24, true));
    EXPECT_EQ(map, empty);
    ByteList references = Hex("01 08 00 00 00 00 00");
    EXPECT_FALSE(jet::SetInUsageMap(references, 8, true)) << "the bits of such a map are on pages of their own";
}

TEST(UsageMapWriter, FillsAMapFromAPageOn) {
    ByteList map(8);
    jet::FillUsageMap(map, 11);
    EXPECT_EQ(map, Hex("00 00 00 00 00 00 F8 FF"));
}

}  // namespace

}  // namespace ledgix::test
