#include "usage_map.h"

#include <gtest/gtest.h>

#include "byte_order.h"
#include "file_image.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Generation;
using Pages = std::vector<jet::PageNumber>;

class UsageMap : public testing::TestWithParam<Generation> {
protected:
    Pages Read(const ByteList& row, jet::PageNumber pages_in_file = 60) {
        const jet::RowId map = file_.AddRow(map_page_, row);
        while (file_.page_count() < pages_in_file)
            file_.Allocate();
        jet::Pager pager(jet::MakeMemoryFile(file_.Finish()), file_.format());
        return jet::ReadUsageMap(pager, map);
    }

    // A page of kind 5 with one bit set.
    jet::PageNumber AddBitmapPage(std::size_t bit) {
        const jet::PageNumber number = file_.Allocate();
        file_.page(number)[0] = 5;
        file_.page(number)[1] = 1;
        file_.page(number)[jet::kBitmapPageBits + bit / 8] = static_cast<std::uint8_t>(1U << bit % 8);
        return number;
    }

    static ByteList Inline(std::uint32_t first, const ByteList& bitmap) {
        ByteList row{0};
        AppendLittle(row, first);
        Append(row, bitmap);
        return row;
    }

    static ByteList References(const std::vector<std::uint32_t>& pages) {
        ByteList row{1};
        for (const std::uint32_t page : pages)
            AppendLittle(row, page);
        return row;
    }

    FileImage file_{GetParam()};
    jet::PageNumber map_page_ = file_.AddDataPage(jet::kUsageMapOwner);
};

TEST_P(UsageMap, InlineListsThePagesOfItsBits) {
    EXPECT_EQ(Read(Inline(0, {0x08, 0x81})), (Pages{3, 8, 15}));
}

TEST_P(UsageMap, InlineStartsAtAnyPage) {
    EXPECT_EQ(Read(Inline(19, {0x03, 0x80})), (Pages{19, 20, 34}));
}

TEST_P(UsageMap, IsAsLongAsItsRow) {
    EXPECT_EQ(Read(Inline(0, {})), Pages{});
    EXPECT_EQ(Read(Inline(0, ByteList(200, 0))), Pages{});
}

TEST_P(UsageMap, ReferenceListsThePagesOfItsBitmapPages) {
    EXPECT_EQ(Read(References({0, 0})), Pages{});
    EXPECT_EQ(Read(References({AddBitmapPage(33), 0})), Pages{33});
}

TEST_P(UsageMap, EachReferenceCoversARangeOfItsOwn) {
    const jet::PageNumber per_bitmap = file_.format().PagesPerBitmap();
    EXPECT_EQ(per_bitmap, GetParam() == Generation::kJet3 ? 16352U : 32736U);
    EXPECT_EQ(Read(References({0, AddBitmapPage(2)}), per_bitmap + 10), Pages{per_bitmap + 2});
}

TEST_P(UsageMap, MayStandOnThePageOfTheFreePages) {
    jet::Pager pager(jet::MakeMemoryFile(file_.Finish()), file_.format());
    EXPECT_EQ(jet::ReadUsageMap(pager, {jet::kAllocationPage, 1}), Pages{});
}

TEST_P(UsageMap, ThatListsAPagePastTheEndIsDamaged) {
    EXPECT_EQ(ErrorOf([&] { Read(Inline(56, {0x10})); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { Read(Inline(0xFFFFFFF8, {0xFF})); }), kDamaged);
}

TEST_P(UsageMap, ThatListsTheHeaderPageIsDamaged) {
    EXPECT_EQ(ErrorOf([&] { Read(Inline(0, {0x01})); }), kDamaged);
}

TEST_P(UsageMap, OfAnUnknownKindIsDamaged) {
    EXPECT_EQ(ErrorOf([&] { Read({2, 0, 0, 0, 0}); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { Read({}); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { Read({0, 0, 0}); }), kDamaged);
}

TEST_P(UsageMap, ThatRefersToAPageOfAnotherKindIsDamaged) {
    EXPECT_EQ(ErrorOf([&] { Read(References({1})); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { Read(References({1000})); }), kDamaged);
}

TEST_P(UsageMap, OutsideAMapPageIsDamaged) {
    const jet::PageNumber page = file_.AddDataPage(99);
    const jet::RowId map = file_.AddMap(page);
    jet::Pager pager(jet::MakeMemoryFile(file_.Finish()), file_.format());
    EXPECT_EQ(ErrorOf([&] { jet::ReadUsageMap(pager, map); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { jet::ReadUsageMap(pager, {0, 0}); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { jet::ReadUsageMap(pager, {map_page_, 9}); }), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, UsageMap, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
