#include <gtest/gtest.h>

#include <algorithm>

#include "specimen.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;

class IndexRules : public RuleTest {
protected:
    const jet::IndexPageLayout& page() const { return pets_.format().index_page; }

    // Pages of an index with this first byte, in the order of the file.
    std::vector<PageNumber> PagesOfKind(const jet::Index& index, jet::PageKind kind) {
        std::vector<PageNumber> pages = pets_.PagesOf(index.map);
        std::erase_if(pages, [&](PageNumber number) { return pets_.Page(number)[0] != static_cast<int>(kind); });
        return pages;
    }

    // Takes the entries from the last leaf of the primary key, whose last one no node names.
    void KeepEntries(PageNumber leaf, std::size_t count) {
        const auto mask = pets_.Page(leaf).subspan(page().mask, page().mask_size);
        std::size_t kept = 0;
        for (std::size_t at = 0; at < 8 * mask.size(); ++at) {
            const auto bit = static_cast<std::uint8_t>(1U << at % 8);
            if ((mask[at / 8] & bit) != 0 && ++kept > count)
                mask[at / 8] = static_cast<std::uint8_t>(mask[at / 8] & ~bit);
        }
        const std::size_t used = count * kEntrySize;
        pets_.Store(leaf, page().free_bytes,
                    static_cast<std::uint16_t>(pets_.format().page_size - page().entries - used));
    }

    void SetIndexFlags(std::size_t index, std::uint8_t flags) {
        const jet::IndexBlockLayout& block = pets_.format().index_block;
        pets_.Store(table_.page, pets_.PlacesOf("Pets").index_blocks + index * block.size + block.flags, flags);
    }

    std::span<std::uint8_t> Entry(PageNumber leaf, std::size_t i) {
        return pets_.Page(leaf).subspan(page().entries + i * kEntrySize, kEntrySize);
    }

    // The last row but one of the null mask: the low bits of the columns.
    std::uint8_t& NullMask(jet::RowId row) { return pets_.Row(row)[pets_.Row(row).size() - 2]; }

    static constexpr std::size_t kEntrySize = 9;  // of a number, not compressed
    const jet::Index& key_ = table_.indexes[0];   // two levels, three entries a leaf
    const jet::Index& rank_ = table_.indexes[1];  // three levels
    const std::vector<PageNumber> leaves_ = PagesOfKind(key_, jet::PageKind::kIndexLeaf);
    const std::vector<PageNumber> rank_leaves_ = PagesOfKind(rank_, jet::PageKind::kIndexLeaf);
    // The root's page was allocated first.
    const std::vector<PageNumber> rank_nodes_ = PagesOfKind(rank_, jet::PageKind::kIndexNode);
};

TEST_P(IndexRules, WantThePagesInTheMap) {
    pets_.SetMapBit(key_.map, leaves_[1], false);
    EXPECT_EQ(pets_.Found(), Codes{"I1"});
}

TEST_P(IndexRules, WantNoOtherPagesInTheMap) {
    pets_.SetMapBit(key_.map, pets_.AddPage(), true);
    EXPECT_EQ(pets_.Found(), Codes{"I2"});
}

TEST_P(IndexRules, WantTheChainOfLeavesForwards) {
    pets_.Store(leaves_[1], page().next, 0U);
    EXPECT_EQ(pets_.Found(), Codes{"I3"});
}

TEST_P(IndexRules, WantTheChainOfLeavesBackwards) {
    pets_.Store(leaves_[1], page().previous, leaves_[2]);
    EXPECT_EQ(pets_.Found(), Codes{"I3"});
}

TEST_P(IndexRules, WantEntriesInOrder) {
    std::swap_ranges(Entry(leaves_[0], 0).begin(), Entry(leaves_[0], 0).end(), Entry(leaves_[0], 1).begin());
    EXPECT_EQ(pets_.Found(), Codes{"I4"});
}

TEST_P(IndexRules, WantPagesOfIndexes) {
    pets_.Page(leaves_[1])[0] = static_cast<std::uint8_t>(jet::PageKind::kData);
    EXPECT_TRUE(pets_.Found().contains("I5"));
}

TEST_P(IndexRules, WantEntriesInsideThePage) {
    pets_.Page(leaves_[1])[page().mask + page().mask_size - 1] = 0x80;
    EXPECT_TRUE(pets_.Found().contains("I6"));
}

TEST_P(IndexRules, WantTheCountOfFreeBytes) {
    pets_.Store(leaves_[1], page().free_bytes, std::uint16_t{5});
    EXPECT_EQ(pets_.Found(), Codes{"I7"});
}

TEST_P(IndexRules, WantNoMoreInCommonThanThereIs) {
    pets_.Page(leaves_[1])[page().prefix_length] = 200;
    EXPECT_TRUE(pets_.Found().contains("I8"));
}

TEST_P(IndexRules, WantNoCircle) {
    pets_.Store(key_.root, page().tail, key_.root);
    EXPECT_TRUE(pets_.Found().contains("I9"));
}

TEST_P(IndexRules, WantPagesThatNameTheTable) {
    pets_.Store(leaves_[1], page().owner, 3U);
    EXPECT_EQ(pets_.Found(), Codes{"I10"});
}

TEST_P(IndexRules, WantNoChildrenOfLeaves) {
    pets_.Store(leaves_[1], page().tail, leaves_[2]);
    EXPECT_EQ(pets_.Found(), Codes{"I11"});
}

TEST_P(IndexRules, WantNoEmptyLeaf) {
    KeepEntries(leaves_.back(), 0);
    EXPECT_EQ(pets_.Found(), (Codes{"I12", "I14"}));
}

TEST_P(IndexRules, WantTheLastEntryOfAChildInItsNode) {
    ++Entry(key_.root, 0)[8];  // the slot
    EXPECT_EQ(pets_.Found(), Codes{"I13"});
}

TEST_P(IndexRules, WantAnEntryForEachRow) {
    KeepEntries(leaves_.back(), 2);
    EXPECT_EQ(pets_.Found(), Codes{"I14"});
}

TEST_P(IndexRules, WantNoEntryForNullsThatAreIgnored) {
    SetIndexFlags(1, jet::kIndexIgnoresNulls | pets_.format().index_block.more_flags);
    NullMask(rows_[0]) = static_cast<std::uint8_t>(NullMask(rows_[0]) & ~2U);
    EXPECT_EQ(pets_.Found(), (Codes{"I15", "I18"}));
}

TEST_P(IndexRules, WantNoEntryForOtherRows) {
    pets_.SetSlot(rows_[0], pets_.Slot(rows_[0]) | jet::kSlotDeleted);
    EXPECT_EQ(pets_.Found(), (Codes{"D6", "I16"}));
}

TEST_P(IndexRules, WantNoNullInARequiredKey) {
    NullMask(rows_[0]) = static_cast<std::uint8_t>(NullMask(rows_[0]) & ~1U);
    EXPECT_EQ(pets_.Found(), (Codes{"I17", "I18"}));
}

TEST_P(IndexRules, WantTheKeyOfTheRow) {
    pets_.Row(rows_[0])[pets_.format().row.count_size + 4] = 99;  // Rank
    EXPECT_EQ(pets_.Found(), Codes{"I18"});
}

TEST_P(IndexRules, WantOneEntryForARow) {
    std::copy_n(Entry(leaves_[0], 0).begin() + 5, 4, Entry(leaves_[0], 1).begin() + 5);
    EXPECT_EQ(pets_.Found(), (Codes{"I14", "I19"}));
}

TEST_P(IndexRules, WantNoKeyTwiceInAUniqueIndex) {
    SetIndexFlags(1, jet::kIndexUnique | pets_.format().index_block.more_flags);
    EXPECT_EQ(pets_.Found(), Codes{"I20"});
}

TEST_P(IndexRules, WantTheCountOfKeysNotToBeTooLowInOwnFilesOnly) {
    const jet::DefinitionLayout& definition = pets_.format().definition;
    pets_.Store(table_.page, definition.statistics + definition.distinct_keys, 3U);
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"I21"});
}

TEST_P(IndexRules, WantOtherChildrenBesideTheLastInOwnFilesOnly) {
    const PageNumber node = rank_nodes_.back();
    std::fill_n(pets_.Page(node).begin() + static_cast<std::ptrdiff_t>(page().mask), page().mask_size, 0);
    EXPECT_FALSE(pets_.Found().contains("I22"));
    EXPECT_TRUE(pets_.FoundStrictly().contains("I22"));
}

TEST_P(IndexRules, WantChildrenOfOneKind) {
    ASSERT_EQ(rank_nodes_.size(), 3U);
    pets_.Store(rank_.root, page().tail, rank_leaves_.back());
    EXPECT_TRUE(pets_.Found().contains("I23"));
}

TEST_P(IndexRules, WantNoSiblingsOfTheRoot) {
    pets_.Store(key_.root, page().next, leaves_[0]);
    EXPECT_EQ(pets_.Found(), Codes{"I24"});
}

TEST_P(IndexRules, WantTheChainOfNodesInOwnFilesOnly) {
    pets_.Store(rank_nodes_.back(), page().previous, 0U);
    EXPECT_EQ(pets_.Found(), Codes{});
    EXPECT_EQ(pets_.FoundStrictly(), Codes{"I24"});
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, IndexRules, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
