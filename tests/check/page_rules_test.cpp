#include <gtest/gtest.h>

#include <algorithm>

#include "new_database.h"
#include "specimen.h"

namespace ledgix::test {

namespace {

using jet::RowId;

constexpr RowId kFreePages{.page = jet::kAllocationPage, .slot = 0};

class HeaderRules : public testing::TestWithParam<jet::Generation> {
protected:
    Specimen new_{jet::NewDatabase(GetParam(), runtime::Date{38000.5})};
};

TEST_P(HeaderRules, WantAllPagesOfTheSystem) {
    new_.content().resize(5 * new_.format().page_size);
    EXPECT_TRUE(new_.Found().contains("H1"));
}

TEST_P(HeaderRules, WantTheConstantBytes) {
    new_.content()[0x15] = 1;
    EXPECT_EQ(new_.Found(), Codes{"H2"});
}

TEST_P(HeaderRules, WantThePagesOfTheSystemTables) {
    new_.ChangeHeader([](auto page) { jet::StoreLittle(page, jet::kHeaderSystemTables, 3U); });
    EXPECT_EQ(new_.Found(), Codes{"H3"});
}

TEST_P(HeaderRules, WantACodePage) {
    new_.ChangeHeader([](auto page) { jet::StoreLittle(page, jet::kHeaderCodePage, std::uint16_t{0}); });
    EXPECT_EQ(new_.Found(), Codes{"H4"});
}

TEST_P(HeaderRules, WantASortOrder) {
    new_.ChangeHeader([&](auto page) { jet::StoreLittle(page, new_.format().header.sort_order, std::uint16_t{0}); });
    EXPECT_EQ(new_.Found(), Codes{"H5"});
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, HeaderRules, kBothGenerations, GenerationName);

TEST(HeaderRulesOfJet4, WantTheMarkOfTheEngine) {
    Specimen file(jet::NewDatabase(jet::Generation::kJet4, runtime::Date{38000.5}));
    file.content()[file.format().header.engine_mark] = 0;
    EXPECT_EQ(file.Found(), Codes{"H2"});
}

TEST(HeaderRulesOfJet4, WantACreationDate) {
    Specimen file(jet::NewDatabase(jet::Generation::kJet4, runtime::Date{38000.5}));
    file.ChangeHeader([](auto page) {
        std::fill_n(page.begin() + jet::kHeaderPassword, 40, std::uint8_t{0});  // the mask of this date
        jet::StoreLittle(page, jet::kHeaderCreationDate, std::uint64_t{0});
    });
    EXPECT_EQ(file.Found(), Codes{"H6"});
}

class PageRules : public RuleTest {};

TEST_P(PageRules, WantPagesThatAreInTheFile) {
    pets_.Store(table_.indexes[0].root, pets_.format().index_page.tail, 9999U);
    EXPECT_TRUE(pets_.Found().contains("P1"));
}

TEST_P(PageRules, WantOneUserOfAPage) {
    pets_.SetMapBit(pets_.Table("Empty").owned_map, rows_[0].page, true);
    EXPECT_EQ(pets_.Found(), Codes{"P2"});
}

TEST_P(PageRules, WantUsedPagesNotToBeFree) {
    pets_.SetMapBit(kFreePages, rows_[0].page, true);
    EXPECT_EQ(pets_.Found(), Codes{"P3"});
}

TEST_P(PageRules, WantUnusedPagesToBeFreeInOwnFilesOnly) {
    pets_.AddPage();
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"P4"});
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, PageRules, kBothGenerations, GenerationName);

class MapRules : public RuleTest {
protected:
    void PointOwnedMapAt(RowId map) {
        jet::StoreRowPointer(pets_.Page(empty_.page), pets_.format().definition.owned_map, map);
    }

    jet::TableDefinition empty_ = pets_.Table("Empty");
};

TEST_P(MapRules, WantAPageOfTheFile) {
    PointOwnedMapAt({.page = 9999, .slot = 0});
    EXPECT_EQ(pets_.Found(), Codes{"U1"});
}

TEST_P(MapRules, WantADataPage) {
    PointOwnedMapAt({.page = pets_.AddPage(), .slot = 0});
    EXPECT_EQ(pets_.Found(), Codes{"U2"});
}

TEST_P(MapRules, WantAPageWithoutOwner) {
    pets_.Store(empty_.owned_map.page, pets_.format().data_page.owner, 5U);
    EXPECT_EQ(pets_.Found(), Codes{"U3"});
}

TEST_P(MapRules, WantARow) {
    PointOwnedMapAt({.page = empty_.owned_map.page, .slot = 200});
    EXPECT_EQ(pets_.Found(), Codes{"U4"});
}

TEST_P(MapRules, WantNoFlags) {
    pets_.SetSlot(empty_.owned_map, pets_.Slot(empty_.owned_map) | jet::kSlotPointer);
    EXPECT_EQ(pets_.Found(), Codes{"U5"});
}

TEST_P(MapRules, WantOneUserOfAMap) {
    PointOwnedMapAt(table_.free_space_map);
    EXPECT_EQ(pets_.Found(), Codes{"U6"});
}

TEST_P(MapRules, WantAKnownKind) {
    pets_.Row(empty_.owned_map)[0] = 7;
    EXPECT_EQ(pets_.Found(), Codes{"U7"});
}

TEST_P(MapRules, WantAStartAtWholeBytesInOwnFilesOnly) {
    pets_.Row(empty_.owned_map)[jet::kMapFirstPage] = 9;
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"U8"});
}

TEST_P(MapRules, WantPagesOfBitsWhereBitsAre) {
    const jet::PageNumber bits = pets_.AddPage();
    pets_.Row(empty_.owned_map)[0] = jet::kReferenceMap;
    jet::StoreLittle(pets_.Row(empty_.owned_map), jet::kMapReferences, bits);
    EXPECT_EQ(pets_.Found(), Codes{"U9"});
    pets_.Store(bits, 0, std::uint16_t{0x0105});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{});
}

TEST_P(MapRules, ReadPagesOfBits) {
    const jet::PageNumber bits = pets_.AddPage();
    pets_.Row(empty_.owned_map)[0] = jet::kReferenceMap;
    jet::StoreLittle(pets_.Row(empty_.owned_map), jet::kMapReferences, bits);
    pets_.Store(bits, 0, std::uint16_t{0x0105});
    pets_.Page(bits)[jet::kBitmapPageBits + rows_[0].page / 8] = static_cast<std::uint8_t>(1U << rows_[0].page % 8);
    EXPECT_EQ(pets_.Found(), Codes{"P2"});
}

TEST_P(MapRules, WantPagesThatAreInTheFile) {
    pets_.SetMapBit(empty_.owned_map, pets_.page_count(), true);
    EXPECT_EQ(pets_.Found(), Codes{"U10"});
}

TEST_P(MapRules, WantFreeSpaceOnOwnPages) {
    pets_.SetMapBit(empty_.free_space_map, rows_[0].page, true);
    EXPECT_EQ(pets_.Found(), Codes{"U11"});
}

TEST_P(MapRules, WantPagesBehindTheEndToBeFreeInOwnFilesOnly) {
    pets_.SetMapBit(kFreePages, pets_.page_count() + 3, false);
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"U12"});
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, MapRules, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
