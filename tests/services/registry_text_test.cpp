#include "registry_text.h"

#include <gtest/gtest.h>

#include "text.h"

namespace ledgix::services {
namespace {

constexpr std::string_view kKey = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings";

// A file with one section of these lines.
std::string Section(const std::string& lines) {
    return "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\n" + lines;
}

std::optional<RegistryValue> Read(const std::string& lines, std::string_view name = "n") {
    return RegistryText(Section(lines)).Find(kKey, name);
}

RegistryValue Value(std::uint32_t type, std::string bytes) {
    return {type, std::move(bytes)};
}

RegistryValue TextValue(const std::string& text) {
    return {1, text + '\0'};
}

std::string Written(const RegistryValue& value) {
    RegistryText text(Section(""));
    text.Set(kKey, "n", value);
    return text.Text().substr(Section("").size());
}

TEST(RegistrySyntax, OfTextsIsAQuotedText) {
    EXPECT_EQ(Read("\"n\"=\"1\"\n"), TextValue("1"));
    EXPECT_EQ(Read("\"n\"=\"\"\n"), TextValue(""));
    EXPECT_EQ(Read("\"n\"=\"D:\\\\a \\\"b\\\"\"\n"), TextValue("D:\\a \"b\""));
    EXPECT_EQ(Read("\"n\"=\"caf\xC3\xA9 \xE2\x82\xAC\"\n"), TextValue("caf\xE9 \x80"));
    EXPECT_EQ(Read("\"n\"=\"\xE2\x86\x92\"\n"), TextValue("?"));
}

TEST(RegistrySyntax, OfNumbersIsADword) {
    EXPECT_EQ(Read("\"n\"=dword:00000105\n"), Value(4, std::string("\5\1\0\0", 4)));
    EXPECT_EQ(Read("\"n\"=DWORD:fFfFfFfE\n"), Value(4, "\xFE\xFF\xFF\xFF"));
    EXPECT_EQ(Read("\"n\"=dword:1\n"), Value(4, std::string("\1\0\0\0", 4)));
}

TEST(RegistrySyntax, OfAnyTypeIsHexadecimal) {
    EXPECT_EQ(Read("\"n\"=hex:0a,FF\n"), Value(3, "\x0A\xFF"));
    EXPECT_EQ(Read("\"n\"=hex:\n"), Value(3, ""));
    EXPECT_EQ(Read("\"n\"=hex(1):31\n"), Value(1, "1"));
    EXPECT_EQ(Read("\"n\"=hex(b):01, 02\n"), Value(11, "\1\2"));
    EXPECT_EQ(Read("\"n\"=hex(ffffffff):01\n"), Value(0xFFFFFFFF, "\1"));
}

TEST(RegistrySyntax, GoesOnBehindABackslash) {
    EXPECT_EQ(Read("\"n\"=hex(2):61,\\\n  62,\\\r\n\t63\n"), Value(2, "abc"));
    EXPECT_EQ(Read("\"n\"=hex:\\\n  61\n"), Value(3, "a"));
    EXPECT_EQ(Read("\"n\"=hex:61,\\\n  62\n\"m\"=\"1\"\n", "m"), TextValue("1"));
}

TEST(RegistrySyntax, NamesTheNamelessValueByASign) {
    EXPECT_EQ(Read("@=\"x\"\n", ""), TextValue("x"));
    EXPECT_EQ(Read("\"@\"=\"x\"\n", ""), std::nullopt);
}

TEST(RegistrySyntax, DisregardsCaseAndBlanksAroundALine) {
    EXPECT_EQ(Read("  \"N\"=\"x\"  \r\n"), TextValue("x"));
    EXPECT_EQ(RegistryText(" [HKEY_local_machine\\A]\r\n\"n\"=\"x\"").Find("hkey_LOCAL_MACHINE\\a", "N"),
              TextValue("x"));
}

TEST(RegistrySyntax, TakesTheLastOfSeveralValues) {
    EXPECT_EQ(Read("\"n\"=\"1\"\n\"n\"=\"2\"\n"), TextValue("2"));
    EXPECT_EQ(Read("\"n\"=\"1\"\n[other]\n\"n\"=\"2\"\n[" + std::string(kKey) + "]\n\"n\"=\"3\"\n"), TextValue("3"));
}

TEST(RegistrySyntax, NeedsNoHeader) {
    EXPECT_EQ(RegistryText("[a]\n\"n\"=\"x\"").Find("a", "n"), TextValue("x"));
}

class DamagedLine : public testing::TestWithParam<const char*> {};

TEST_P(DamagedLine, IsPassedOverAndHidesNothingBehindIt) {
    EXPECT_EQ(Read(std::string(GetParam()) + "\n"), std::nullopt);
    EXPECT_EQ(Read("\"n\"=\"before\"\n" + std::string(GetParam()) + "\n\"m\"=\"behind\"\n"), TextValue("before"));
    EXPECT_EQ(Read(std::string(GetParam()) + "\n\"m\"=\"behind\"\n", "m"), TextValue("behind"));
}

INSTANTIATE_TEST_SUITE_P(, DamagedLine,
                         testing::Values("n=\"x\"", "\"n\"", "\"n\"=", "\"n=\"x\"", "\"n\"=x", "\"n\"=\"x",
                                         "\"n\"=\"x\\", "\"n\"=\"x\" y", "\"n\"=-", "\"n\"=dword:", "\"n\"=dword:1g",
                                         "\"n\"=dword:123456789", "\"n\"=dword:-1", "\"n\"=hex", "\"n\"=hex:1g",
                                         "\"n\"=hex:123", "\"n\"=hex:01,", "\"n\"=hex:,01", "\"n\"=hex:01,,02",
                                         "\"n\"=hex():01", "\"n\"=hex(g):01", "\"n\"=hex(2:01", "\"n\"=hex2):01",
                                         "\"n\"=hex(:01", "\"n\"=hex(123456789):01", "\"n\"=hex:01,\\", "; \"n\"=\"x\"",
                                         "\"", "@", "="));

TEST(DamagedHeading, HidesTheValuesBelowIt) {
    for (const char* heading : {"[", "[]", "[other", "[-other]", "[other] x"})
        EXPECT_EQ(Read(std::string("\"n\"=\"1\"\n") + heading + "\n\"n\"=\"2\"\n"), TextValue("1")) << heading;
}

TEST(DamagedText, OfAnyKindIsRead) {
    for (const char* text : {"", "\n", "\r\n\r\n", "\"n\"=\"x\"", "[a]", "\"n\"=hex:\\", "\xFF\xFE[", "]\\["})
        EXPECT_EQ(RegistryText(text).Find(kKey, "n"), std::nullopt);
}

TEST(WrittenValue, IsATextInQuotesWhenItEndsInItsOnlyNul) {
    EXPECT_EQ(Written(TextValue("1")), "\"n\"=\"1\"\n");
    EXPECT_EQ(Written(TextValue("")), "\"n\"=\"\"\n");
    EXPECT_EQ(Written(TextValue("D:\\a \"b\"")), "\"n\"=\"D:\\\\a \\\"b\\\"\"\n");
    EXPECT_EQ(Written(TextValue("caf\xE9 \x80")), "\"n\"=\"café €\"\n");
}

TEST(WrittenValue, IsHexadecimalWhenItIsAnotherText) {
    EXPECT_EQ(Written(Value(1, "1")), "\"n\"=hex(1):31\n");
    EXPECT_EQ(Written(Value(1, "")), "\"n\"=hex(1):\n");
    EXPECT_EQ(Written(Value(1, std::string("a\0\0", 3))), "\"n\"=hex(1):61,00,00\n");
    EXPECT_EQ(Written(TextValue("a\nb")), "\"n\"=hex(1):61,0a,62,00\n");
    EXPECT_EQ(Written(TextValue("\x81")), "\"n\"=hex(1):81,00\n");
}

TEST(WrittenValue, IsADwordWhenItIsANumberOfFourBytes) {
    EXPECT_EQ(Written(Value(4, std::string("\5\1\0\xFF", 4))), "\"n\"=dword:ff000105\n");
    EXPECT_EQ(Written(Value(4, "\5\1")), "\"n\"=hex(4):05,01\n");
    EXPECT_EQ(Written(Value(3, "\5\1")), "\"n\"=hex:05,01\n");
    EXPECT_EQ(Written(Value(11, "\5")), "\"n\"=hex(b):05\n");
}

TEST(WrittenValue, TakesSeveralLinesWhenItIsLong) {
    const std::string lines = Written(Value(3, std::string(40, 'x')));
    std::size_t longest = 0;
    for (std::size_t start = 0; start < lines.size(); start = lines.find('\n', start) + 1)
        longest = std::max(longest, lines.find('\n', start) - start);
    EXPECT_LE(longest, 80U);
    EXPECT_NE(lines.find(",\\\n  78,"), std::string::npos);
    EXPECT_EQ(Read(lines), Value(3, std::string(40, 'x')));
}

TEST(WrittenValue, ComesBackWithEveryByteAndLength) {
    std::string every;
    for (int byte = 0; byte < 256; ++byte)
        every.push_back(static_cast<char>(byte));
    for (const std::uint32_t type : {0U, 1U, 2U, 3U, 4U, 7U, 11U, 0xFFFFFFFFU}) {
        for (std::size_t length = 0; length <= every.size(); length += 5) {
            EXPECT_EQ(Read(Written(Value(type, every.substr(0, length)))), Value(type, every.substr(0, length)));
            EXPECT_EQ(Read(Written(Value(type, every.substr(length)))), Value(type, every.substr(length)));
        }
    }
}

constexpr const char* kUntidy =
    "; settings of this machine\n"
    "REGEDIT4\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\n"
    "; the number of the house\n"
    "\"Networkable\"=hex(4):01,\\\n"
    "   00,00,00\n"
    "what is this\n"
    "  \"Unknown\" = hex(7):61\n"
    "\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Other]\n"
    "\"Networkable\"=\"9\"";

TEST(Change, LeavesEveryOtherLineAsItIs) {
    RegistryText text(kUntidy);
    text.Set(kKey, "networkable", TextValue("0"));
    EXPECT_EQ(text.Text(), runtime::ReplaceAll(kUntidy, "hex(4):01,\\\n   00,00,00", "\"0\""));
}

TEST(Change, AddsAValueAtTheEndOfItsKey) {
    RegistryText text(kUntidy);
    text.Set(kKey, "DatabaseLocation", TextValue("x"));
    EXPECT_EQ(text.Text(), runtime::ReplaceAll(kUntidy, "hex(7):61\n", "hex(7):61\n\"DatabaseLocation\"=\"x\"\n"));
    EXPECT_EQ(text.Find(kKey, "DatabaseLocation"), TextValue("x"));
}

TEST(Change, AddsAKeyBehindAllOthers) {
    RegistryText text(kUntidy);
    text.Set("HKEY_LOCAL_MACHINE\\New", "n", TextValue("x"));
    EXPECT_EQ(text.Text(), std::string(kUntidy) + "\n\n[HKEY_LOCAL_MACHINE\\New]\n\"n\"=\"x\"\n");
}

TEST(Change, ReplacesTheLastLineOfAFile) {
    RegistryText text(kUntidy);
    text.Set("HKEY_LOCAL_MACHINE\\SOFTWARE\\Other", "Networkable", TextValue("8"));
    EXPECT_EQ(text.Text(), runtime::ReplaceAll(kUntidy, "\"9\"", "\"8\"\n"));
}

TEST(Change, ReplacesTheValueThatHolds) {
    RegistryText text(Section("\"n\"=\"1\"\n\"n\"=\"2\"\n"));
    text.Set(kKey, "n", TextValue("3"));
    EXPECT_EQ(text.Text(), Section("\"n\"=\"1\"\n\"n\"=\"3\"\n"));
}

TEST(Change, KeepsTheLineBreaksOfTheFile) {
    RegistryText text(runtime::ReplaceAll(Section("\"n\"=\"1\"\n"), "\n", "\r\n"));
    text.Set(kKey, "n", TextValue("2"));
    text.Set(kKey, "m", TextValue("3"));
    EXPECT_EQ(text.Text(), runtime::ReplaceAll(Section("\"n\"=\"2\"\n\"m\"=\"3\"\n"), "\n", "\r\n"));
}

TEST(Change, StartsANewFileWithItsHeader) {
    RegistryText text("");
    text.Set("K", "", TextValue("x"));
    EXPECT_EQ(text.Text(), "REGEDIT4\n\n[K]\n@=\"x\"\n");
}

TEST(Change, KeepsATextThatIsNotChanged) {
    for (const std::string& text :
         {std::string(kUntidy), Section("a\r\nb\rc\n\n"), std::string("\n\r\n"), std::string()})
        EXPECT_EQ(RegistryText(text).Text(), text);
}

TEST(Keys, AreThereWithAHeadingOrWithOneBelow) {
    const RegistryText text("[A\\B\\C]\n[Ä]\n");
    EXPECT_TRUE(text.HasKey("a\\b\\c"));
    EXPECT_TRUE(text.HasKey("A\\B"));
    EXPECT_TRUE(text.HasKey("ä"));
    EXPECT_FALSE(text.HasKey("A\\B\\C\\D"));
    EXPECT_FALSE(text.HasKey("A\\B\\"));
    EXPECT_FALSE(text.HasKey("A\\"));
    EXPECT_FALSE(text.HasKey("B"));
}

}  // namespace
}  // namespace ledgix::services
