#include "text_codec.h"

#include <gtest/gtest.h>

#include "error_of.h"
#include "hex.h"

namespace ledgix::test {

namespace {

std::string Jet3(std::string_view hex) {
    return jet::DecodeText(jet::FormatOf(jet::Generation::kJet3), Hex(hex));
}
std::string Jet4(std::string_view hex) {
    return jet::DecodeText(jet::FormatOf(jet::Generation::kJet4), Hex(hex));
}

TEST(TextOfJet3, IsInCodePage1252) {
    EXPECT_EQ(Jet3("52 65 78"), "Rex");
    EXPECT_EQ(Jet3("43 61 66 E9 20 80"), "Caf\u00E9 \u20AC");
    EXPECT_EQ(Jet3(""), "");
    EXPECT_EQ(Jet3("FF FE 41"),
              "\u00FF\u00FE"
              "A")
        << "nothing is compressed";
}

TEST(TextOfJet4, IsUtf16) {
    EXPECT_EQ(Jet4("41 00 6C 00"), "Al");
    EXPECT_EQ(Jet4("E9 00 AC 20 3A 26"), "\u00E9\u20AC\u263A");
    EXPECT_EQ(Jet4("3D D8 00 DE"), "\U0001F600");
    EXPECT_EQ(Jet4(""), "");
}

TEST(TextOfJet4, KeepsZeroCharacters) {
    EXPECT_EQ(Jet4("41 00 00 00 42 00"), std::string("A\0B", 3));
}

TEST(TextOfJet4, WithBrokenCharactersHasReplacements) {
    EXPECT_EQ(Jet4("3D D8"), "\uFFFD") << "half a pair at the end";
    EXPECT_EQ(Jet4("3D D8 41 00"),
              "\uFFFD"
              "A");
    EXPECT_EQ(Jet4("00 DE 41 00"),
              "\uFFFD"
              "A");
    EXPECT_EQ(Jet4("41 00 42"), "A\uFFFD") << "half a unit at the end";
    EXPECT_EQ(Jet4("41"), "\uFFFD");
}

TEST(TextOfJet4, MayBeCompressed) {
    EXPECT_EQ(Jet4("FF FE 52 65 78"), "Rex");
    EXPECT_EQ(Jet4("FF FE 43 61 66 E9"), "Caf\u00E9");
    EXPECT_EQ(Jet4("FF FE"), "");
}

TEST(TextOfJet4, SwitchesWhenCompressed) {
    EXPECT_EQ(Jet4("FF FE 61 62 00 AC 20 3A 26 00 63 64"),
              "ab\u20AC\u263A"
              "cd");
    EXPECT_EQ(Jet4("FF FE 00 AC 20"), "\u20AC") << "to the end";
    EXPECT_EQ(Jet4("FF FE 00 AC 20 00"), "\u20AC");
    EXPECT_EQ(Jet4("FF FE 61 00 00 62"), "ab") << "there and back";
    EXPECT_EQ(Jet4("FF FE 61 00"), "a");
    EXPECT_EQ(Jet4("FF FE 00 AC 20 00 61 00 3A 26"),
              "\u20AC"
              "a\u263A")
        << "twice";
    EXPECT_EQ(Jet4("FF FE 61 00 AC"), "a\uFFFD") << "half a unit";
}

TEST(NameOfJet4, IsNeverCompressed) {
    EXPECT_EQ(jet::DecodeName(jet::FormatOf(jet::Generation::kJet4), Hex("FF FE 52 65")), "\uFEFF\u6552");
}

ByteList EncodedJet3(std::string_view text) {
    return jet::EncodeText(jet::FormatOf(jet::Generation::kJet3), text, true);
}
ByteList EncodedJet4(std::string_view text, bool may_be_compressed) {
    return jet::EncodeText(jet::FormatOf(jet::Generation::kJet4), text, may_be_compressed);
}

TEST(TextOfJet3, IsWrittenInCodePage1252) {
    EXPECT_EQ(EncodedJet3("Caf\u00E9 \u20AC"), Hex("43 61 66 E9 20 80"));
    EXPECT_EQ(EncodedJet3(""), ByteList{});
}

TEST(TextOfJet3, IsRefusedWithACharacterThatTheCodePageLacks) {
    EXPECT_ERROR(EncodedJet3("\u03C0"), runtime::ErrorNumber::kFeatureNotAvailable);
}

TEST(TextOfJet4, IsRefusedWhenItWouldReadAsCompressed) {
    EXPECT_ERROR(EncodedJet4("\uFEFFab", false), runtime::ErrorNumber::kFeatureNotAvailable);
}

TEST(TextOfJet4, IsWrittenCompressedWhereThatIsAllowedAndShorter) {
    EXPECT_EQ(EncodedJet4("Rex", true), Hex("FF FE 52 65 78"));
    EXPECT_EQ(EncodedJet4("Rex", false), Hex("52 00 65 00 78 00"));
    EXPECT_EQ(EncodedJet4("Al", true), Hex("41 00 6C 00"));
    EXPECT_EQ(EncodedJet4("a\u00FFb", true), Hex("FF FE 61 FF 62"));
    EXPECT_EQ(EncodedJet4("ab\u0100", true), Hex("61 00 62 00 00 01"));
    EXPECT_EQ(EncodedJet4(std::string_view("a\0b", 3), true), Hex("61 00 00 00 62 00"));
    EXPECT_EQ(EncodedJet4("\U0001F600", true), Hex("3D D8 00 DE"));
    EXPECT_EQ(EncodedJet4("", true), ByteList{});
}

TEST(Names, AreNeverWrittenCompressed) {
    EXPECT_EQ(jet::EncodeName(jet::FormatOf(jet::Generation::kJet4), "Rex"), Hex("52 00 65 00 78 00"));
    EXPECT_EQ(jet::EncodeName(jet::FormatOf(jet::Generation::kJet3), "Rex"), Hex("52 65 78"));
}

}  // namespace

}  // namespace ledgix::test
