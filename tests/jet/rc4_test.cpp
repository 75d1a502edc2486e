#include "rc4.h"

#include <gtest/gtest.h>

#include "hex.h"

namespace ledgix::test {

namespace {

TEST(Rc4, GivesTheKeyStreamOfTheHeader) {
    ByteList stream(128);
    jet::ApplyRc4(Hex("C7 DA 39 6B"), stream);
    EXPECT_EQ(stream,
              Hex("B5 6F 03 62 61 08 C2 55 EB A9 67 72 43 3F 00 9C 7A 9F 90 FF 80 9A 31 C5 79 BA ED 30 BC DF CC 9D"
                  "63 D9 E4 C3 7B 42 FB 8A BC 4E 86 FB EC 37 5D 44 9C FA C6 5E 28 E6 13 B6 8A 60 54 94 7B 36 F5 72"
                  "DF B1 77 F4 13 43 CF AF B1 33 34 61 79 5B 92 B5 7C 2A 05 F1 7C 99 01 1B 98 FD 12 4F 4A 94 6C 3E"
                  "60 26 5F 95 F8 D0 89 24 85 67 C6 1F 27 44 D2 EE CF 65 ED FF 07 C7 46 A1 78 16 0C ED E9 2D 62 D4"));
}

TEST(Rc4, TwiceGivesTheFirstBytesBack) {
    ByteList bytes{1, 2, 3};
    jet::ApplyRc4(Hex("01 02"), bytes);
    EXPECT_NE(bytes, (ByteList{1, 2, 3}));
    jet::ApplyRc4(Hex("01 02"), bytes);
    EXPECT_EQ(bytes, (ByteList{1, 2, 3}));
}

}  // namespace

}  // namespace ledgix::test
