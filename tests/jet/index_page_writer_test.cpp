#include "index_page_writer.h"

#include <gtest/gtest.h>

#include "hex.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Generation;

class IndexPageWriter : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }
};

// The primary key of a table of two rows, as Jet writes it.
TEST_P(IndexPageWriter, WritesTheLeafThatJetWrites) {
    const jet::PageNumber data = IsJet4() ? 19 : 23;
    const std::vector<std::uint8_t> leaf =
        jet::MakeIndexLeaf(format(), IsJet4() ? 16 : 20,
                           {{.key = Hex("7F 7F FF FF FE"), .row = {.page = data, .slot = 1}},
                            {.key = Hex("7F 80 00 00 01"), .row = {.page = data, .slot = 0}}});
    ByteList expected(format().page_size);
    const auto put = [&](std::size_t at, const char* hex) {
        const ByteList bytes = Hex(hex);
        std::copy(bytes.begin(), bytes.end(), expected.begin() + static_cast<std::ptrdiff_t>(at));
    };
    put(0, IsJet4() ? "04 01 0E 0E 10 00 00 00" : "04 01 F6 06 14 00 00 00");
    put(IsJet4() ? 27 : 22, "00 02 04");
    put(IsJet4() ? 0x1E0 : 0xF8, IsJet4() ? "7F 7F FF FF FE 00 00 13 01 7F 80 00 00 01 00 00 13 00"
                                          : "7F 7F FF FF FE 00 00 17 01 7F 80 00 00 01 00 00 17 00");
    EXPECT_EQ(leaf, expected);
}

TEST_P(IndexPageWriter, WritesAnEmptyLeaf) {
    const std::vector<std::uint8_t> leaf = jet::MakeIndexLeaf(format(), 16, {});
    ByteList expected = Hex(IsJet4() ? "04 01 20 0E 10 00 00 00" : "04 01 08 07 10 00 00 00");
    expected.resize(format().page_size);
    EXPECT_EQ(leaf, expected);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, IndexPageWriter, kBothGenerations, GenerationName);

TEST(IndexEntries, AreOrderedByKeyThenPageThenSlot) {
    const auto entry = [](std::string_view key, jet::PageNumber page, std::uint8_t slot) {
        return jet::IndexEntry{.key = Hex(key), .row = {.page = page, .slot = slot}};
    };
    EXPECT_LT(entry("7F 01", 9, 9), entry("7F 02", 1, 1));
    EXPECT_LT(entry("7F", 9, 9), entry("7F 00", 1, 1));
    EXPECT_LT(entry("7F", 8, 9), entry("7F", 9, 1));
    EXPECT_LT(entry("7F", 9, 1), entry("7F", 9, 2));
    EXPECT_FALSE(entry("7F", 9, 1) < entry("7F", 9, 1));
}

TEST(IndexEntries, CountTheirDistinctKeys) {
    EXPECT_EQ(jet::CountDistinctKeys({}), 0U);
    EXPECT_EQ(jet::CountDistinctKeys({{.key = {1}, .row = {1, 0}}}), 1U);
    EXPECT_EQ(jet::CountDistinctKeys({{.key = {1}, .row = {1, 0}},
                                      {.key = {1}, .row = {1, 1}},
                                      {.key = {2}, .row = {1, 2}},
                                      {.key = {3}, .row = {1, 3}},
                                      {.key = {3}, .row = {1, 4}}}),
              3U);
}

}  // namespace

}  // namespace ledgix::test
