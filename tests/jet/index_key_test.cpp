#include "index_key.h"

#include <gtest/gtest.h>

#include <limits>

#include "hex.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Generation;
using jet::IndexKey;
using runtime::Variant;

constexpr int kNotAvailable = 3251;

IndexKey Key(Generation generation, const std::vector<Variant>& values, bool ascending = true) {
    jet::Index index;
    index.columns.assign(values.size(), {.column_number = 0, .ascending = ascending});
    return jet::MakeIndexKey(jet::FormatOf(generation), index, values);
}

IndexKey Jet3(const Variant& value, bool ascending = true) {
    return Key(Generation::kJet3, {value}, ascending);
}
IndexKey Jet4(const Variant& value, bool ascending = true) {
    return Key(Generation::kJet4, {value}, ascending);
}

Variant Text(const char* text) {
    return std::string(text);
}

TEST(IndexKey, OfMSysObjectsIsTheOneThatJetWrites) {
    EXPECT_EQ(Key(Generation::kJet4, {0x0F000001, Text("Pet")}), Hex("7F 8F 00 00 01 7F 66 51 6D 01 00"));
    EXPECT_EQ(Key(Generation::kJet3, {0x0F000001, Text("Pet")}), Hex("7F 8F 00 00 01 7F 73 66 77 00"));
    EXPECT_EQ(Key(Generation::kJet4, {0x0F000001, Text("MSysACEs")}),
              Hex("7F 8F 00 00 01 7F 60 6B 76 6B 4A 4D 51 6B 01 00"));
    EXPECT_EQ(Key(Generation::kJet3, {0x0F000001, Text("MSysACEs")}),
              Hex("7F 8F 00 00 01 7F 6F 76 7D 76 60 62 66 76 00"));
}

TEST(IndexKey, OfNullIsOneByte) {
    EXPECT_EQ(Jet4(runtime::Null{}), Hex("00"));
    EXPECT_EQ(Jet4(runtime::Null{}, false), Hex("FF"));
}

TEST(IndexKey, OfNumbersHasTheTopBitInverted) {
    EXPECT_EQ(Jet4(-2), Hex("7F 7F FF FF FE"));
    EXPECT_EQ(Jet4(1), Hex("7F 80 00 00 01"));
    EXPECT_EQ(Jet4(std::int16_t{258}), Hex("7F 81 02"));
    EXPECT_EQ(Jet4(std::uint8_t{200}), Hex("7F C8"));
    EXPECT_EQ(Jet4(runtime::Currency{10000}), Hex("7F 80 00 00 00 00 00 27 10"));
    EXPECT_EQ(Jet4(true), Hex("7F 00"));
    EXPECT_EQ(Jet4(false), Hex("7F FF"));
}

TEST(IndexKey, OfFloatingNumbersOrdersNegativeOnesBelow) {
    EXPECT_EQ(Jet4(1.0), Hex("7F BF F0 00 00 00 00 00 00"));
    EXPECT_EQ(Jet4(-1.0), Hex("7F 40 0F FF FF FF FF FF FF"));
    EXPECT_EQ(Jet4(1.0F), Hex("7F BF 80 00 00"));
    EXPECT_EQ(Jet4(runtime::Date{36526.5}), Hex("7F C0 E1 D5 D0 00 00 00 00"));
    EXPECT_LT(Jet4(-2.5), Jet4(-1.5));
    EXPECT_LT(Jet4(-1.5), Jet4(0.0));
    EXPECT_LT(Jet4(0.0), Jet4(1e300));
}

TEST(IndexKey, DescendingIsInverted) {
    EXPECT_EQ(Jet4(1, false), Hex("80 7F FF FF FE"));
    EXPECT_EQ(Jet4(true, false), Hex("80 FF"));
    EXPECT_EQ(Jet4(1.0, false), Hex("80 40 0F FF FF FF FF FF FF"));
}

TEST(IndexKey, OfBinaryHasSegmentsOfEight) {
    EXPECT_EQ(Jet4(runtime::Binary{}), Hex("7F"));
    EXPECT_EQ(Jet4(runtime::Binary{1, 2}), Hex("7F 01 02 00 00 00 00 00 00 02"));
    EXPECT_EQ(Jet4(runtime::Binary{1, 2, 3, 4, 5, 6, 7, 8}), Hex("7F 01 02 03 04 05 06 07 08 08"));
    EXPECT_EQ(Jet4(runtime::Binary{1, 2, 3, 4, 5, 6, 7, 8, 9}),
              Hex("7F 01 02 03 04 05 06 07 08 09 09 00 00 00 00 00 00 00 01"));
    EXPECT_EQ(Jet4(runtime::Binary{1, 2, 3, 4, 5, 6, 7, 8, 9}, false),
              Hex("80 FE FD FC FB FA F9 F8 F7 09 F6 FF FF FF FF FF FF FF FE"));
}

TEST(IndexKey, OfAGuidIsItsBytesInDisplayOrder) {
    const runtime::Guid guid{{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 1, 2, 3, 4, 5, 6, 7, 8}};
    EXPECT_EQ(Jet4(guid), Hex("7F 12 34 56 78 9A BC DE F0 09 01 02 03 04 05 06 07 08 08"));
}

TEST(IndexKey, OfNumericHasASignByte) {
    const auto numeric = [](bool negative, std::uint32_t low) {
        return Variant{runtime::Decimal{.negative = negative, .scale = 2, .magnitude = {0, 0, 0, low}}};
    };
    EXPECT_EQ(Jet4(numeric(false, 5)), Hex("7F FF 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 05"));
    EXPECT_EQ(Jet4(numeric(true, 5)), Hex("7F 00 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FA"));
    EXPECT_EQ(Jet4(numeric(false, 5), false), Hex("80 FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FA"));
    EXPECT_EQ(Jet4(numeric(true, 5), false), Hex("80 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 05"));
    EXPECT_EQ(Jet4(numeric(true, 0)), Jet4(numeric(false, 0)));
}

TEST(TextKey, ForgetsCaseAndTrailingSpaces) {
    EXPECT_EQ(Jet4(Text("Rex  ")), Jet4(Text("rEX")));
    EXPECT_EQ(Jet3(Text("Rex  ")), Jet3(Text("rEX")));
    EXPECT_NE(Jet4(Text(" Rex")), Jet4(Text("Rex")));
    EXPECT_EQ(Jet4(Text("   ")), Jet4(Text("")));
}

TEST(TextKey, TakesNoMoreThan255Characters) {
    const std::string longest(255, 'x');
    EXPECT_EQ(Jet4(longest + "more"), Jet4(longest));
    EXPECT_EQ(Jet3(longest + "more"), Jet3(longest));
    EXPECT_NE(Jet4(longest.substr(1)), Jet4(longest));
}

TEST(TextKey, OfJet4HasAccentsBehindTheText) {
    EXPECT_EQ(Jet4(Text("")), Hex("7F 01 00"));
    EXPECT_EQ(Jet4(Text("a_b")), Hex("7F 4A 2B 03 4C 01 00"));
    EXPECT_EQ(Jet4(Text("Caf\u00E9s")), Hex("7F 4D 4A 53 51 6B 01 02 02 02 0E 00"));
    EXPECT_EQ(Jet4(Text("\u00C6\u00F1")), Hex("7F 4A 51 62 01 02 19 00"));
    EXPECT_EQ(Jet4(Text("\u00DF\u00D7\u00F7\u00FF")), Hex("7F 6B 6B 33 09 33 0A 76 01 02 02 02 13 00"));
    EXPECT_EQ(Jet4(Text("\u00A0\u00BF\u00AA")), Hex("7F 08 02 2B 16 4A 01 02 02 03 00"));
}

TEST(TextKey, OfJet4HasHyphensAndApostrophesInATrailer) {
    EXPECT_EQ(Jet4(Text("a-b")), Hex("7F 4A 4C 01 01 01 01 80 0B 06 82 00"));
    EXPECT_EQ(Jet4(Text("O'Dell")), Hex("7F 64 4F 51 5E 5E 01 01 01 01 80 0B 06 80 00"));
    EXPECT_EQ(Jet4(Text("-'")), Hex("7F 01 01 01 01 80 07 06 82 80 07 06 80 00"));
    EXPECT_EQ(Jet4(Text("\u00E9-x'")), Hex("7F 51 75 01 0E 01 01 01 80 0B 06 82 80 0F 06 80 00"));
    EXPECT_EQ(Jet4(Text("\u00AD\x7F\u0080\x01\x0E")),
              Hex("7F 01 01 01 01 80 07 06 83 80 07 06 1D 80 07 06 1E 80 07 06 03 80 07 06 0B 00"));
    EXPECT_EQ(Jet4(Text("\t\r")), Hex("7F 08 03 08 07 01 00"));
}

TEST(TextKey, OfJet4IgnoresTheZeroCharacter) {
    EXPECT_EQ(Jet4(std::string("a\0b", 3)), Jet4(Text("ab")));
}

TEST(TextKey, OfJet4DescendingEndsInAZero) {
    EXPECT_EQ(Jet4(Text("ab"), false), Hex("80 B5 B3 FE FF 00"));
}

TEST(TextKey, OfJet4RefusesCharactersBeyondItsTable) {
    EXPECT_EQ(ErrorOf([] { Jet4(Text("\u20AC")); }), kNotAvailable);
    EXPECT_EQ(ErrorOf([] { Jet4(Text("\u0160kola")); }), kNotAvailable);
}

TEST(TextKey, OfJet3HasAccentsInHalfBytes) {
    EXPECT_EQ(Jet3(Text("")), Hex("7F 00"));
    EXPECT_EQ(Jet3(Text("Caf\u00E9")), Hex("7F 62 60 67 66 02 24 00"));
    EXPECT_EQ(Jet3(Text("\u00E9")), Hex("7F 66 04 00"));
    EXPECT_EQ(Jet3(Text("\u00E9\u00E8")), Hex("7F 66 66 04 30"));
    EXPECT_EQ(Jet3(Text("\u00E9t\u00E9s")), Hex("7F 66 77 66 76 04 40"));
    EXPECT_EQ(Jet3(Text("\u00DF\u00F7\u00FF")), Hex("7F 76 76 55 7D 06 00"));
    EXPECT_EQ(Jet3(Text("\u20AC\u0161")), Hex("7F 10 76 0A 00"));
}

TEST(TextKey, OfJet3DescendingIsInvertedToTheLastByte) {
    EXPECT_EQ(Jet3(Text("ab"), false), Hex("80 9F 9E FF"));
}

TEST(TextKey, OfJet3RefusesCharactersOutsideItsCodePage) {
    EXPECT_EQ(ErrorOf([] { Jet3(Text("\u010Cesko")); }), kNotAvailable);
}

}  // namespace

}  // namespace ledgix::test
