#include "row_store.h"

#include <algorithm>
#include <optional>
#include <set>

#include "byte_order.h"
#include "data_page.h"
#include "data_page_writer.h"
#include "hex.h"
#include "page_space.h"
#include "usage_map.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;
using jet::RowId;

// Rows of any bytes, on pages of a table.
class RowStore : public WrittenDatabase {
protected:
    void SetUp() override {
        LeaveUnsound();
        MakeTable({{.name = "A"}});
        table_ = Table();
        change_.emplace(file());
        NewStore();
    }

    // One that remembers nothing.
    void NewStore() { store_.emplace(pager(), table_.page, table_.owned_map, table_.free_space_map); }

    static ByteList RowOf(std::size_t size) { return ByteList(size, static_cast<std::uint8_t>(size)); }
    RowId Append(std::size_t size, std::uint16_t flags = 0) { return store_->Append(RowOf(size), flags); }
    ByteList BytesAt(RowId id, std::uint16_t flags = 0) {
        jet::DataPage page;
        const auto row = jet::ReadRow(pager(), id, table_.page, flags, "row", page);
        return {row.begin(), row.end()};
    }
    std::size_t Room() const { return format().page_size - format().data_page.slots; }
    std::size_t FreeBytes(PageNumber page) { return jet::FreeBytes(format(), pager().Read(page)->bytes); }
    std::vector<PageNumber> Owned() { return jet::ReadUsageMap(pager(), table_.owned_map); }
    std::vector<PageNumber> WithFreeSpace() { return jet::ReadUsageMap(pager(), table_.free_space_map); }

    jet::TableDefinition table_;
    std::optional<jet::Transaction> change_;
    std::optional<jet::RowStore> store_;
};

TEST_P(RowStore, FillsAPageBeforeItTakesAnother) {
    const std::size_t on_a_page = Room() / 102;
    std::set<PageNumber> pages;
    for (std::size_t i = 0; i < 3 * on_a_page; ++i)
        pages.insert(Append(100).page);
    EXPECT_EQ(pages.size(), 3U);
    EXPECT_EQ(Owned(), std::vector<PageNumber>(pages.begin(), pages.end()));
}

TEST_P(RowStore, GivesRowsTheirBytesAndFlags) {
    const RowId plain = Append(50);
    const RowId hidden = Append(60, jet::kSlotHidden);
    EXPECT_EQ(BytesAt(plain), RowOf(50));
    EXPECT_EQ(BytesAt(hidden, jet::kSlotHidden), RowOf(60));
}

TEST_P(RowStore, FindsTheRoomOnThePagesThatItHas) {
    const RowId first = Append(Room() - 2 - 300);
    const RowId second = Append(Room() - 2 - 200);
    NewStore();
    EXPECT_EQ(Append(150).page, second.page);
    NewStore();
    EXPECT_EQ(Append(250).page, first.page);
    EXPECT_EQ(Owned().size(), 2U);
}

TEST_P(RowStore, TakesFullPagesOutOfItsMapOfFreeSpace) {
    const RowId full = Append(Room() - 2 - 20);
    const RowId half = Append(Room() / 2);
    EXPECT_EQ(WithFreeSpace(), std::vector<PageNumber>{half.page});
    NewStore();
    const RowId third = Append(Room() - 100);
    EXPECT_EQ(Owned(), (std::vector<PageNumber>{full.page, half.page, third.page}));
    const auto pages = WithFreeSpace();
    EXPECT_EQ(std::count(pages.begin(), pages.end(), full.page), 0);
    EXPECT_EQ(std::count(pages.begin(), pages.end(), half.page), 1) << "it is not full";
}

TEST_P(RowStore, PutsNoMoreThan255RowsOnAPage) {
    std::set<PageNumber> pages;
    for (int i = 0; i < 256; ++i)
        pages.insert(Append(4).page);
    EXPECT_EQ(pages.size(), 2U);
    EXPECT_EQ(WithFreeSpace(), std::vector<PageNumber>{*pages.rbegin()});
}

TEST_P(RowStore, OffersAPageAgainWhenARowOfItGoes) {
    const RowId row = Append(Room() - 2 - 20);
    const RowId other = Append(10);
    ASSERT_EQ(other.page, row.page);
    Append(100);
    NewStore();
    Append(Room() - 2);
    NewStore();
    store_->Delete(row);
    EXPECT_EQ(FreeBytes(row.page), Room() - 2 - 2 - 10);
    const auto pages = WithFreeSpace();
    EXPECT_EQ(std::count(pages.begin(), pages.end(), row.page), 1);
    EXPECT_EQ(BytesAt(row, jet::kSlotDeleted), ByteList());
    EXPECT_EQ(BytesAt(other), RowOf(10));
}

TEST_P(RowStore, GivesAPageBackWithItsLastRow) {
    const RowId first = Append(10);
    const RowId second = Append(10);
    store_->Delete(first);
    EXPECT_EQ(Owned(), std::vector<PageNumber>{first.page});
    store_->Delete(second);
    EXPECT_TRUE(Owned().empty());
    EXPECT_TRUE(WithFreeSpace().empty());
    const RowId next = Append(10);
    EXPECT_EQ(next, first) << "the lowest free page, all empty";
}

TEST_P(RowStore, LeavesDeletedSlotsUnused) {
    Append(10);
    const RowId gone = Append(10);
    store_->Delete(gone);
    EXPECT_EQ(Append(10), (RowId{gone.page, 2}));
}

TEST_P(RowStore, ReplacesARowWhereItIs) {
    const RowId first = Append(100);
    const RowId second = Append(100);
    EXPECT_TRUE(store_->Replace(first, RowOf(200), 0));
    EXPECT_EQ(BytesAt(first), RowOf(200));
    EXPECT_EQ(BytesAt(second), RowOf(100));
    EXPECT_TRUE(store_->Replace(first, RowOf(4), jet::kSlotPointer));
    EXPECT_EQ(BytesAt(first, jet::kSlotPointer), RowOf(4));
    EXPECT_EQ(BytesAt(second), RowOf(100));
    EXPECT_EQ(FreeBytes(first.page), Room() - 2 * 2 - 104);
}

TEST_P(RowStore, DoesNotReplaceARowByOneThatHasNoRoom) {
    const RowId first = Append(100);
    const RowId second = Append(Room() - 2 * 2 - 100 - 50);
    EXPECT_FALSE(store_->Replace(first, RowOf(151), jet::kSlotHidden));
    EXPECT_EQ(BytesAt(first), RowOf(100));
    EXPECT_TRUE(store_->Replace(first, RowOf(150), 0));
    EXPECT_EQ(FreeBytes(first.page), 0U);
    EXPECT_EQ(BytesAt(second).size(), Room() - 2 * 2 - 100 - 50);
}

TEST_P(RowStore, OffersAPageAgainWhenARowOfItShrinks) {
    const RowId row = Append(Room() - 2);
    NewStore();
    Append(Room() - 2);
    jet::RemoveFromMap(pager(), table_.free_space_map, row.page);
    EXPECT_TRUE(store_->Replace(row, RowOf(10), 0));
    const auto pages = WithFreeSpace();
    EXPECT_EQ(std::count(pages.begin(), pages.end(), row.page), 1);
}

TEST_P(RowStore, DoesWithoutAMapOfFreeSpace) {
    store_.emplace(pager(), table_.page, table_.owned_map, RowId());
    const RowId first = Append(10);
    EXPECT_EQ(Append(10).page, first.page);
    EXPECT_TRUE(store_->Replace(first, RowOf(5), 0));
    EXPECT_TRUE(WithFreeSpace().empty());
    store_->Delete(first);
    store_->Delete({first.page, 1});
    EXPECT_TRUE(Owned().empty());
}

TEST_P(RowStore, RefusesPagesOfOthers) {
    jet::AddToMap(pager(), table_.free_space_map, table_.owned_map.page);
    EXPECT_EQ(ErrorOf([&] { Append(10); }), kDamaged);
    NewStore();
    EXPECT_EQ(ErrorOf([&] { store_->Delete(table_.owned_map); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { store_->Replace({.page = 2, .slot = 0}, RowOf(4), 0); }), kDamaged);
}

TEST_P(RowStore, RefusesPagesWhoseRowsOverlap) {
    const RowId row = Append(10);
    Append(10);
    const auto page = pager().Change(row.page);
    jet::StoreLittle(page, format().data_page.slots + 2, static_cast<std::uint16_t>(format().page_size));
    EXPECT_EQ(ErrorOf([&] { Append(10); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { store_->Delete(row); }), kDamaged);
}

TEST_P(RowStore, RefusesARowThatIsNotThere) {
    const RowId row = Append(10);
    EXPECT_EQ(ErrorOf([&] { store_->Delete({.page = row.page, .slot = 1}); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { store_->Replace({.page = row.page, .slot = 200}, RowOf(4), 0); }), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, RowStore, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
