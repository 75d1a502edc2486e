#include "page_space.h"

#include <optional>
#include <random>
#include <set>

#include "byte_order.h"
#include "data_page_writer.h"
#include "new_database.h"
#include "usage_map.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using jet::PageNumber;
using jet::RowId;

constexpr RowId kFreePages{.page = 1, .slot = 0};

// Tests work in one level. They give back the pages that they took, so that the file is sound in the end.
class PageSpace : public WrittenDatabase {
protected:
    void SetUp() override { change_.emplace(file()); }
    void TearDown() override {
        if (!change_)
            return;
        for (const PageNumber page : taken_)
            jet::FreePage(pager(), page);
        // Pages of bits for what lies far behind the end of the file come when they are needed.
        const bool references = RowBytes(kFreePages)[0] == 1;
        change_->Commit();
        if (references)
            LeaveUnsound();
        EXPECT_EQ(Faults(file(), jet::Strictness::kAnyWriter), "");
        WrittenDatabase::TearDown();
    }

    // The change is given up.
    void GiveUp() { change_.reset(); }

    PageNumber Take() {
        const PageNumber page = jet::AllocatePage(pager());
        EXPECT_TRUE(taken_.insert(page).second) << page << " is taken already";
        return page;
    }
    void TakeUpTo(PageNumber page) {
        while (Take() < page) {
        }
    }
    void GiveBack(PageNumber page) {
        jet::FreePage(pager(), page);
        taken_.erase(page);
    }

    // Makes the file longer by pages that are free.
    void Lengthen(PageNumber pages) {
        change_.reset();
        std::vector<std::uint8_t> content = ContentOf(file());
        content.resize(pages * format().page_size);
        Open(std::move(content));
        change_.emplace(file());
    }

    std::vector<std::uint8_t> RowBytes(RowId map) {
        const auto row = jet::RowBytes(format(), pager().Change(map.page), map.slot);
        return {row.begin(), row.end()};
    }
    std::span<std::uint8_t> ChangeRow(RowId map) { return jet::RowBytes(format(), pager().Change(map.page), map.slot); }
    std::vector<PageNumber> Pages(RowId map) { return jet::ReadUsageMap(pager(), map); }

    // On a page of maps that is taken.
    RowId EmptyMap() {
        const RowId map = jet::AddMap(pager(), 0);
        taken_.insert(map.page);
        return map;
    }

    std::optional<jet::Transaction> change_;
    std::set<PageNumber> taken_;
};

TEST_P(PageSpace, GivesTheLowestFreePageAndItIsEmpty) {
    const PageNumber first = Take();
    EXPECT_EQ(first, IsJet4() ? 16U : 20U);
    const PageNumber second = Take();
    Take();
    pager().Change(second)[100] = 7;
    GiveBack(second);
    GiveBack(first);
    const PageNumber pages = pager().page_count();
    EXPECT_EQ(Take(), first);
    EXPECT_EQ(Take(), second);
    EXPECT_EQ(pager().Read(second)->bytes, std::vector<std::uint8_t>(format().page_size));
    EXPECT_EQ(pager().page_count(), pages);
}

TEST_P(PageSpace, MakesTheFileLongerWhenNoPageIsFree) {
    const PageNumber pages = pager().page_count();
    for (PageNumber i = 0; i < 10; ++i) {
        EXPECT_EQ(Take(), pages + i);
        EXPECT_EQ(pager().page_count(), pages + i + 1);
    }
}

TEST_P(PageSpace, GrowsTheMapOfFreePagesBy32Bytes) {
    const std::size_t size = RowBytes(kFreePages).size();
    const auto covered = static_cast<PageNumber>(8 * (size - 5));
    const RowId second{.page = 1, .slot = 1};
    const auto other = RowBytes(second);
    TakeUpTo(covered - 1);
    EXPECT_EQ(RowBytes(kFreePages).size(), size);
    TakeUpTo(covered);
    const auto map = RowBytes(kFreePages);
    ASSERT_EQ(map.size(), size + 32);
    EXPECT_EQ(map[size], 0xFE) << "the page taken, and seven that will come";
    for (std::size_t i = size + 1; i < map.size(); ++i)
        EXPECT_EQ(map[i], 0xFF);
    EXPECT_EQ(RowBytes(second), other);
}

TEST_P(PageSpace, TurnsTheMapOfFreePagesIntoReferencesWhenItsPageIsFull) {
    const PageNumber covered = IsJet4() ? 32000 : 15104;
    TakeUpTo(covered - 1);
    EXPECT_EQ(RowBytes(kFreePages)[0], 0);
    TakeUpTo(covered);
    EXPECT_EQ(RowBytes(kFreePages)[0], 1);
    GiveBack(77);
    GiveBack(covered - 7);
    EXPECT_EQ(Take(), 77U);
    EXPECT_EQ(Take(), covered - 7);
    TakeUpTo(format().PagesPerBitmap() + 10);
    EXPECT_NE(jet::LoadU32(RowBytes(kFreePages), 5), 0U) << "a second page of bits";
    GiveBack(format().PagesPerBitmap() + 9);
    EXPECT_EQ(Take(), format().PagesPerBitmap() + 9);
}

// The same, early and often: the page is full because its other row is long.
TEST_P(PageSpace, NeverGivesAPageTwice) {
    for (const bool full : {false, true}) {
        if (full) {
            const std::size_t free = jet::FreeBytes(format(), pager().Change(1));
            ASSERT_TRUE(jet::ResizeRow(format(), pager().Change(1), 1, RowBytes({.page = 1, .slot = 1}).size() + free));
        }
        std::mt19937 random(5);
        for (int i = 0; i < 3000; ++i) {
            if (random() % 3 == 0 && !taken_.empty()) {
                const auto page = taken_.lower_bound(static_cast<PageNumber>(random() % pager().page_count()));
                if (page != taken_.end())
                    GiveBack(*page);
            } else {
                EXPECT_GE(Take(), 16U);
            }
        }
        EXPECT_EQ(RowBytes(kFreePages)[0], full ? 1 : 0);
    }
}

TEST_P(PageSpace, RefusesToGiveAPageOfTheSystem) {
    ChangeRow(kFreePages)[5] = 0x08;
    EXPECT_EQ(ErrorOf([&] { jet::AllocatePage(pager()); }), kDamaged);
    GiveUp();
}

TEST_P(PageSpace, PutsPagesIntoMapsAndTakesThemOut) {
    const RowId map = EmptyMap();
    EXPECT_EQ(Pages(map), std::vector<PageNumber>{});
    for (const PageNumber page : {7U, 3U, 12U, 7U})
        jet::AddToMap(pager(), map, page);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{3, 7, 12}));
    jet::RemoveFromMap(pager(), map, 7);
    jet::RemoveFromMap(pager(), map, 8);
    jet::RemoveFromMap(pager(), map, 100000);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{3, 12}));
    EXPECT_EQ(RowBytes(map)[0], 0);
}

TEST_P(PageSpace, MovesAMapWhosePagesLieTogether) {
    Lengthen(3000);
    const RowId map = EmptyMap();
    for (const PageNumber page : {2500U, 2900U, 2450U})
        jet::AddToMap(pager(), map, page);
    const auto row = RowBytes(map);
    EXPECT_EQ(row[0], 0);
    EXPECT_EQ(jet::LoadU32(row, 1), 2448U);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{2450, 2500, 2900}));
}

TEST_P(PageSpace, TurnsAMapWhosePagesLieFarApartIntoReferences) {
    Lengthen(3000);
    const RowId map = EmptyMap();
    for (const PageNumber page : {100U, 2900U, 101U})
        jet::AddToMap(pager(), map, page);
    const auto row = RowBytes(map);
    EXPECT_EQ(row[0], 1);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{100, 101, 2900}));
    jet::AddToMap(pager(), map, 1500);
    jet::RemoveFromMap(pager(), map, 100);
    jet::RemoveFromMap(pager(), map, 99);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{101, 1500, 2900}));
    taken_.insert(jet::LoadU32(row, 1));
    EXPECT_FALSE(taken_.contains(0));
}

TEST_P(PageSpace, GivesAMapOfReferencesAnotherPageOfBitsWhereItNeedsOne) {
    const PageNumber far = format().PagesPerBitmap() + 50;
    Lengthen(far + 10);
    const RowId map = EmptyMap();
    for (const PageNumber page : {30U, far})
        jet::AddToMap(pager(), map, page);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{30, far}));
    EXPECT_EQ(jet::HighestInMap(pager(), map, far + 1), far);
    EXPECT_EQ(jet::HighestInMap(pager(), map, far), 30U);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 30), 0U);
    for (const std::size_t reference : {1U, 5U}) {
        const PageNumber bitmap = jet::LoadU32(RowBytes(map), reference);
        EXPECT_EQ(pager().Read(bitmap)->bytes[0], 5);
        EXPECT_EQ(pager().Read(bitmap)->bytes[1], 1);
        taken_.insert(bitmap);
    }
}

TEST_P(PageSpace, FindsTheHighestPageOfAMap) {
    const RowId map = EmptyMap();
    EXPECT_EQ(jet::HighestInMap(pager(), map, 1000), 0U);
    for (const PageNumber page : {3U, 8U, 13U})
        jet::AddToMap(pager(), map, page);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 1000000), 13U);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 14), 13U);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 13), 8U);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 8), 3U);
    EXPECT_EQ(jet::HighestInMap(pager(), map, 3), 0U);
}

TEST_P(PageSpace, ReadsAMapThatBeginsAtAnyPage) {
    const RowId map = EmptyMap();
    jet::StoreLittle(ChangeRow(map), 1, PageNumber{3});
    jet::AddToMap(pager(), map, 3);
    jet::AddToMap(pager(), map, 12);
    EXPECT_EQ(RowBytes(map)[5], 0x01);
    EXPECT_EQ(RowBytes(map)[6], 0x02);
    jet::AddToMap(pager(), map, 2);
    EXPECT_EQ(Pages(map), (std::vector<PageNumber>{2, 3, 12}));
    EXPECT_EQ(jet::LoadU32(RowBytes(map), 1), 0U);
}

TEST_P(PageSpace, PutsMapsOnAPageUntilItIsFull) {
    const RowId first = EmptyMap();
    EXPECT_EQ(RowBytes(first), std::vector<std::uint8_t>(format().new_map_size));
    const std::size_t room = (format().page_size - format().data_page.slots) / (format().new_map_size + 2);
    for (std::size_t i = 1; i < room; ++i)
        EXPECT_EQ(jet::AddMap(pager(), first.page), (RowId{first.page, static_cast<std::uint8_t>(i)}));
    const RowId next = jet::AddMap(pager(), first.page);
    EXPECT_NE(next.page, first.page);
    EXPECT_EQ(next.slot, 0);
    taken_.insert(next.page);
    EXPECT_EQ(jet::LoadU32(pager().Read(next.page)->bytes, 4), 0U) << "the owner of pages of maps";
}

class DamagedMap : public PageSpace {
protected:
    void SetUp() override {
        PageSpace::SetUp();
        map_ = EmptyMap();
        jet::AddToMap(pager(), map_, 9);
        jet::AddMap(pager(), map_.page);
    }
    void TearDown() override { GiveUp(); }

    void ExpectRefused() {
        EXPECT_EQ(ErrorOf([&] { jet::AddToMap(pager(), map_, 10); }), kDamaged);
        EXPECT_EQ(ErrorOf([&] { jet::RemoveFromMap(pager(), map_, 9); }), kDamaged);
        EXPECT_EQ(ErrorOf([&] { jet::HighestInMap(pager(), map_, 100); }), kDamaged);
    }

    RowId map_;
};

TEST_P(DamagedMap, OfAnUnknownKindIsRefused) {
    ChangeRow(map_)[0] = 2;
    ExpectRefused();
}

TEST_P(DamagedMap, WithoutBytesIsRefused) {
    jet::ResizeRow(format(), pager().Change(map_.page), map_.slot, 4);
    ExpectRefused();
}

TEST_P(DamagedMap, OnAPageOfAnotherOwnerIsRefused) {
    jet::StoreLittle(pager().Change(map_.page), 4, 2U);
    ExpectRefused();
    EXPECT_EQ(ErrorOf([&] { jet::AddMap(pager(), map_.page); }), kDamaged);
}

TEST_P(DamagedMap, ThatIsNotThereIsRefused) {
    map_.slot = 200;
    ExpectRefused();
    map_.page = 70000;
    ExpectRefused();
}

TEST_P(DamagedMap, ThatOverlapsAnotherIsRefused) {
    const auto page = pager().Change(map_.page);
    const std::size_t slot = format().data_page.slots + 2;
    jet::StoreLittle(page, slot, static_cast<std::uint16_t>(format().page_size - 20));
    ExpectRefused();
    EXPECT_EQ(ErrorOf([&] { jet::AddMap(pager(), map_.page); }), kDamaged);
}

TEST_P(DamagedMap, ThatRefersToAPageOfAnotherKindIsRefused) {
    const auto row = ChangeRow(map_);
    row[0] = 1;
    jet::StoreLittle(row, 1, 2U);
    ExpectRefused();
    jet::StoreLittle(ChangeRow(map_), 1, 70000U);
    ExpectRefused();
}

TEST_P(DamagedMap, ThatListsAPageBeyondTheFileIsNotMoved) {
    Lengthen(3000);
    map_ = EmptyMap();
    const auto row = ChangeRow(map_);
    jet::StoreLittle(row, 1, 3000U);
    row[5] = 1;
    EXPECT_EQ(ErrorOf([&] { jet::AddToMap(pager(), map_, 10); }), kDamaged);
}

TEST_P(DamagedMap, OfFreePagesIsRefused) {
    ChangeRow(kFreePages)[0] = 3;
    EXPECT_EQ(ErrorOf([&] { jet::AllocatePage(pager()); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { jet::FreePage(pager(), 9); }), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, PageSpace, kBothGenerations, GenerationName);
INSTANTIATE_TEST_SUITE_P(BothGenerations, DamagedMap, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
