#include "index_tree.h"

#include <gtest/gtest.h>

#include <set>

#include "byte_order.h"
#include "changed_index.h"
#include "index_cursor.h"
#include "index_tree_check.h"
#include "jet_test.h"
#include "table_rows.h"
#include "usage_map.h"

namespace ledgix::test {

namespace {

using jet::RowId;

class IndexTree : public ChangedIndex {};

TEST_P(IndexTree, WithoutEntriesHasNoKey) {
    EXPECT_FALSE(tree_->HasKey(Key(1)));
    Verify();
}

TEST_P(IndexTree, HasTheKeyOfItsOnlyEntry) {
    EXPECT_TRUE(Insert(Key(1), Row(7)));
    EXPECT_TRUE(tree_->HasKey(Key(1)));
    EXPECT_FALSE(tree_->HasKey(Key(0)));
    EXPECT_FALSE(tree_->HasKey(Key(2)));
    Verify();
    Remove(Key(1), Row(7));
    EXPECT_FALSE(tree_->HasKey(Key(1)));
    Verify();
}

TEST_P(IndexTree, TakesAscendingKeysAndFillsItsPages) {
    InsertAll(Numbers(9000), Key);
    const TreeCheck check = CheckPages();
    const std::size_t capacity = pager().format().page_size - pager().format().index_page.entries;
    EXPECT_EQ(check.levels, 2U);
    EXPECT_LT(check.pages * capacity, 9000U * 9U);  // fewer bytes than without what keys have in common
}

TEST_P(IndexTree, TakesDescendingKeys) {
    InsertAll(Backwards(Numbers(6000)), Key);
}

TEST_P(IndexTree, TakesKeysInAnyOrder) {
    InsertAll(Shuffled(Numbers(9000)), Key);
}

TEST_P(IndexTree, OfLongKeysHasSeveralLevels) {
    InsertAll(Shuffled(Numbers(1500)), [](std::uint32_t number) { return LongKey(number, 300 + number % 100); });
    EXPECT_GE(CheckPages().levels, GetParam() == jet::Generation::kJet3 ? 5U : 3U);
    RemoveAll(Shuffled(Numbers(1500)), [](std::uint32_t number) { return LongKey(number, 300 + number % 100); });
    EXPECT_EQ(CheckPages().pages, 1U);
}

TEST_P(IndexTree, TakesLongKeysInAscendingOrder) {
    const auto key = [](std::uint32_t number) {
        ByteList bytes = Key(number);
        Append(bytes, ByteList(400, 0x4A));
        return bytes;
    };
    InsertAll(Numbers(1000), key);
    RemoveAll(Numbers(1000), key);
    InsertAll(Backwards(Numbers(1000)), key);
    RemoveAll(Backwards(Numbers(1000)), key);
}

// More of them than the length of a prefix can say in the older generation.
TEST_P(IndexTree, TakesKeysThatBeginWithTheSameManyBytes) {
    const auto key = [](std::uint32_t number) {
        ByteList bytes(300, 0x4A);
        Append(bytes, Key(number));
        return bytes;
    };
    InsertAll(Numbers(2000), key);
    RemoveAll(Shuffled(Numbers(1000)), key);
    InsertAll(Shuffled(Numbers(1000)), key);
    EXPECT_GT(CheckPages().compressed_pages, 2U);
}

// Short and long entries side by side: there may be room for neither half with the new entry.
TEST_P(IndexTree, TakesKeysOfVeryDifferentLengths) {
    const std::size_t longest = pager().format().page_size - pager().format().index_page.entries - 8;
    const auto key = [longest](std::uint32_t number) {
        return LongKey(number, number % 3 == 0 ? longest - number % 50 : 20 + number % 7 * longest / 8);
    };
    InsertAll(Shuffled(Numbers(600)), key);
    RemoveAll(Shuffled(Numbers(600)), key);
}

TEST_P(IndexTree, RefusesAKeyThatFitsNoPage) {
    const std::size_t longest = pager().format().page_size - pager().format().index_page.entries - 8;
    EXPECT_EQ(ErrorOf([&] { tree_->Insert(ByteList(longest + 1, 1), Row(1)); }), 3047);
    EXPECT_TRUE(Insert(ByteList(longest, 1), Row(1)));
    EXPECT_TRUE(Insert(ByteList(longest, 2), Row(1)));
    EXPECT_TRUE(Insert(ByteList(longest, 3), Row(1)));
    Verify();
}

TEST_P(IndexTree, TellsWhetherAKeyIsNew) {
    EXPECT_TRUE(Insert(Key(5), Row(3)));
    EXPECT_FALSE(Insert(Key(5), Row(2)));
    EXPECT_FALSE(Insert(Key(5), Row(4)));
    Remove(Key(5), Row(3));
    EXPECT_FALSE(Insert(Key(5), Row(3)));
    EXPECT_TRUE(Insert(Key(6), Row(3)));
    Verify();
}

TEST_P(IndexTree, TellsWhetherAKeyIsNewAcrossPages) {
    for (const std::uint32_t number : Shuffled(Numbers(3000))) {
        const bool had_key = HasKeyInModel(Key(number / 1000));
        EXPECT_EQ(Insert(Key(number / 1000), Row(number)), !had_key) << number;
    }
    Verify();
    EXPECT_GT(CheckPages().pages, 3U);
}

TEST_P(IndexTree, RefusesAnEntryThatItHas) {
    Insert(Key(5), Row(3));
    EXPECT_EQ(ErrorOf([&] { tree_->Insert(Key(5), Row(3)); }), kDamaged);
}

TEST_P(IndexTree, CannotRemoveAnEntryThatItLacks) {
    EXPECT_EQ(ErrorOf([&] { tree_->Remove(Key(5), Row(3)); }), kDamaged);
    Insert(Key(5), Row(3));
    EXPECT_EQ(ErrorOf([&] { tree_->Remove(Key(5), Row(4)); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { tree_->Remove(Key(6), Row(3)); }), kDamaged);
}

TEST_P(IndexTree, IsWhatASetIsAfterManyChanges) {
    ChangeAtRandom(24000, 3000, Key);
}

TEST_P(IndexTree, OfLongKeysIsWhatASetIsAfterManyChanges) {
    ChangeAtRandom(12000, 700, [](std::uint32_t number) { return LongKey(number, 100 + number * 37 % 350); });
}

// The root becomes an empty leaf; the file serves the same entries again without growing.
TEST_P(IndexTree, GivesAllPagesBackWhenItsEntriesHaveGone) {
    const jet::PageNumber before = pager().page_count();
    const auto orders = {Numbers(5000), Backwards(Numbers(5000)), Shuffled(Numbers(5000))};
    for (const std::vector<std::uint32_t>& order : orders) {
        InsertAll(Shuffled(Numbers(5000)), Key);
        const jet::PageNumber grown = pager().page_count();
        RemoveAll(order, Key);
        const TreeCheck check = CheckPages();
        EXPECT_EQ(check.pages, 1U);
        EXPECT_EQ(check.levels, 1U);
        EXPECT_EQ(pager().page_count(), grown);
        for (jet::PageNumber page = before; page < grown; ++page)
            EXPECT_TRUE(IsFreePage(pager(), page)) << page;
    }
}

TEST_P(IndexTree, ForgetsWhatADroppedLevelChanged) {
    InsertAll(Numbers(2000), Key);
    const std::set<ByteList> before = model_;
    pager().BeginLevel();
    InsertAll({5000, 5001, 5002}, Key);
    RemoveAll(Numbers(1500), Key);
    pager().DropLevel();
    model_ = before;
    Verify();
    InsertAll({6000, 2500, 5000}, Key);
}

// Keys that begin alike, stored as other writers do, on pages that are full only thanks to that.
TEST_P(IndexTree, ChangesPagesThatAnotherWriterCompressed) {
    const auto key = [](std::uint32_t number) {
        ByteList bytes(40, 0x4A);
        Append(bytes, Key(number));
        return bytes;
    };
    std::vector<IndexEntry> entries;
    for (std::uint32_t number = 0; number < 1200; number += 2)
        entries.push_back({.key = key(number), .row = Row(number)});
    OpenWith(entries, (pager().format().page_size - pager().format().index_page.entries - 49) / 6);
    const TreeCheck check = CheckPages();
    ASSERT_EQ(check.fault, "");
    ASSERT_GT(check.compressed_pages, 1U);
    std::vector<std::uint32_t> odd;
    for (std::uint32_t number = 1; number < 1200; number += 2)
        odd.push_back(number);
    InsertAll(Shuffled(odd), key);
    InsertAll({1, 0xFFFFFFFF, 77}, Key);  // have nothing in common with the others
    RemoveAll(Shuffled(Numbers(1200)), key);
    RemoveAll({77, 1, 0xFFFFFFFF}, Key);
}

// A page full of rows with the same key, which share two bytes of their row pointers too.
TEST_P(IndexTree, ChangesPagesThatAnotherWriterCompressedTooFar) {
    std::vector<IndexEntry> entries;
    for (std::uint32_t number = 0; number < 4000; ++number)
        entries.push_back({.key = Key(7), .row = Row(number)});
    OpenWith(entries, (pager().format().page_size - pager().format().index_page.entries - 9) / 2);
    VerifyWalk();
    for (jet::PageNumber page = 99; page < 122; ++page) {
        for (std::uint8_t slot = 200; slot < 204; ++slot)
            EXPECT_FALSE(Insert(Key(7), {.page = page, .slot = slot}));
        Insert(Key(page % 2 == 0 ? 6 : 8), {.page = page, .slot = 0});
        VerifyWalk();
    }
    for (const std::uint32_t number : Shuffled(Numbers(4000)))
        Remove(Key(7), Row(number));
    VerifyWalk();
    for (jet::PageNumber page = 99; page < 122; ++page) {
        for (std::uint8_t slot = 200; slot < 204; ++slot)
            Remove(Key(7), {.page = page, .slot = slot});
        Remove(Key(page % 2 == 0 ? 6 : 8), {.page = page, .slot = 0});
        VerifyWalk();
    }
    Verify();
    EXPECT_EQ(CheckPages().pages, 1U);
}

// Whatever a byte says: results, or the error for damage.
TEST_P(IndexTree, ThatIsDamagedIsChangedOrRefused) {
    for (const std::uint32_t number : Shuffled(Numbers(900)))
        Insert(LongKey(number, 40 + number % 60), Row(number));
    std::vector<std::uint8_t> sound;
    for (jet::PageNumber page = 0; page < pager().page_count(); ++page) {
        const jet::PagePtr bytes = pager().Read(page);
        sound.insert(sound.end(), bytes->bytes.begin(), bytes->bytes.end());
    }
    const std::vector<jet::PageNumber> pages = jet::ReadUsageMap(pager(), index().map);
    std::size_t refused = 0;
    for (std::uint32_t seed = 0; seed < 600; ++seed)
        refused += ChangeDamaged(sound, pages, seed) ? 0 : 1;
    EXPECT_GT(refused, 100U);
    EXPECT_LT(refused, 600U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, IndexTree, kBothGenerations, GenerationName);

class IndexesOfASampleFile : public testing::TestWithParam<std::string> {};

std::vector<ByteList> Walk(jet::DatabaseFile& file, const jet::TableDefinition& table, const jet::Index& index) {
    std::vector<ByteList> entries;
    for (jet::IndexCursor cursor(file, table, index); cursor.Next();)
        entries.push_back(Entry(ByteList(cursor.key().begin(), cursor.key().end()), cursor.row()));
    return entries;
}

void EmptyAndRefill(jet::DatabaseFile& file, const jet::TableDefinition& table, const jet::Index& index) {
    const std::vector<ByteList> before = Walk(file, table, index);
    const std::vector<ByteList> entries = Shuffled(before);
    jet::IndexTree tree(file.pager(), table.page, index);
    const auto split = [](const ByteList& entry) {
        const auto pointer = jet::LoadBig<std::uint32_t>(entry, entry.size() - 4);
        return std::pair(jet::Bytes(entry).first(entry.size() - 4),
                         RowId{.page = pointer >> 8, .slot = static_cast<std::uint8_t>(pointer)});
    };
    for (const ByteList& entry : entries)
        tree.Remove(split(entry).first, split(entry).second);
    EXPECT_EQ(Walk(file, table, index), std::vector<ByteList>());
    for (const ByteList& entry : entries)
        tree.Insert(split(entry).first, split(entry).second);
    EXPECT_EQ(Walk(file, table, index), before);
    EXPECT_EQ(CheckIndexTree(file.pager(), table.page, index).fault, "");
}

TEST_P(IndexesOfASampleFile, AreTheSameWhenEmptiedAndFilledAgain) {
    jet::DatabaseFile file(jet::OpenPageFile(GetParam()));
    file.pager().BeginLevel();
    std::size_t indexes = 0;
    for (const jet::CatalogEntry& entry : file.ReadCatalog()) {
        if (!entry.IsTable())
            continue;
        const jet::TableDefinition table = file.ReadTableDefinition(entry.DefinitionPage());
        for (const jet::Index& index : table.indexes) {
            SCOPED_TRACE(entry.name + "." + index.name);
            EmptyAndRefill(file, table, index);
            ++indexes;
        }
    }
    EXPECT_GT(indexes, 5U);
}

INSTANTIATE_TEST_SUITE_P(AllFiles, IndexesOfASampleFile, testing::ValuesIn(SampleFiles()), FileTestName);

}  // namespace

}  // namespace ledgix::test
