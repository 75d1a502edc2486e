#include "data_page.h"

#include <gtest/gtest.h>

#include "file_image.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::DataPage;
using jet::Generation;

constexpr std::uint32_t kOwner = 77;

class DataPageOf : public testing::TestWithParam<Generation> {
protected:
    // The page under test, read from the file as it is now.
    DataPage Read(std::uint32_t owner = kOwner) {
        pager_ = std::make_unique<jet::Pager>(jet::MakeMemoryFile(file_.Finish()), file_.format());
        return DataPage(*pager_, page_, owner, "data page");
    }

    // Overwrites a slot: its flags and the place of its row.
    void SetSlot(std::size_t slot, std::uint16_t entry) {
        jet::StoreLittle(file_.page(page_), file_.format().data_page.slots + 2 * slot, entry);
    }

    FileImage file_{GetParam()};
    jet::PageNumber page_ = file_.AddDataPage(kOwner);
    std::unique_ptr<jet::Pager> pager_;
};

ByteList Copy(jet::Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST_P(DataPageOf, GivesTheRowsByTheirSlots) {
    file_.AddRow(page_, {1, 2, 3});
    file_.AddRow(page_, {4, 5});
    const DataPage page = Read();
    ASSERT_EQ(page.slot_count(), 2U);
    EXPECT_EQ(Copy(page.row(0)), (ByteList{1, 2, 3}));
    EXPECT_EQ(Copy(page.row(1)), (ByteList{4, 5}));
    EXPECT_EQ(page.flags(1), 0);
}

TEST_P(DataPageOf, ADeletedRowWithoutBytesLeavesTheOthersAlone) {
    file_.AddRow(page_, {1, 2, 3});
    const jet::RowId gone = file_.AddRow(page_, {4, 5});
    file_.AddRow(page_, {6});
    file_.SqueezeOut(gone);
    file_.SetFlags(gone, jet::kSlotDeleted);
    const DataPage page = Read();
    EXPECT_EQ(page.flags(1), jet::kSlotDeleted);
    EXPECT_EQ(Copy(page.row(2)), ByteList{6});
}

TEST_P(DataPageOf, AnotherOwnerIsDamage) {
    EXPECT_EQ(ErrorOf([&] { Read(kOwner + 1); }), kDamaged);
}

TEST_P(DataPageOf, APageOfAnotherKindIsDamage) {
    file_.page(page_)[0] = 4;
    EXPECT_EQ(ErrorOf([&] { Read(); }), kDamaged);
}

TEST_P(DataPageOf, MoreSlotsThanRoomAreDamage) {
    const auto set_count = [&](std::uint16_t count) {
        jet::StoreLittle(file_.page(page_), file_.format().data_page.slot_count, count);
    };
    set_count(256);
    EXPECT_EQ(Read().slot_count(), 256U);
    set_count(257);
    EXPECT_EQ(ErrorOf([&] { Read(); }), kDamaged);
    set_count(0xFFFF);
    EXPECT_EQ(ErrorOf([&] { Read(); }), kDamaged);
}

TEST_P(DataPageOf, RowsOutsideTheirPlaceAreDamage) {
    file_.AddRow(page_, {1, 2, 3});
    file_.AddRow(page_, {4, 5});
    for (const int start : {0x0000, 0x000C, 0x1FFF}) {
        SetSlot(1, static_cast<std::uint16_t>(start));
        EXPECT_EQ(ErrorOf([&] { Read().row(1); }), kDamaged) << start;
    }
    SetSlot(0, 0x1FFF);
    SetSlot(1, 0x1FFE);
    EXPECT_EQ(ErrorOf([&] { Read().row(1); }), kDamaged) << "both past the page";
}

TEST_P(DataPageOf, TheErrorSaysWhatAndWhere) {
    file_.AddRow(page_, {1, 2, 3});
    SetSlot(0, 0x1FFF);
    try {
        Read().row(0);
        FAIL();
    } catch (const runtime::RuntimeError& error) {
        EXPECT_EQ(error.description(), "The database file is damaged: row 0 of page 2 starts past its end.");
    }
}

TEST_P(DataPageOf, ReadRowWantsTheFlagsThatItIsAskedFor) {
    const jet::RowId id = file_.AddRow(page_, {1, 2, 3});
    Read();
    DataPage page;
    EXPECT_EQ(Copy(jet::ReadRow(*pager_, id, kOwner, 0, "row", page)), (ByteList{1, 2, 3}));
    EXPECT_EQ(ErrorOf([&] { jet::ReadRow(*pager_, id, kOwner, jet::kSlotHidden, "row", page); }), kDamaged);
    EXPECT_EQ(ErrorOf([&] { jet::ReadRow(*pager_, {id.page, 1}, kOwner, 0, "row", page); }), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, DataPageOf, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
