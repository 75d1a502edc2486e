#include "data_page_writer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "byte_order.h"
#include "hex.h"
#include "jet_test.h"
#include "pet_table.h"

namespace ledgix::test {

namespace {

using jet::Generation;

class DataPageWriter : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }

    std::optional<std::uint8_t> Append(const ByteList& row, std::uint16_t flags = 0) {
        return jet::AppendRow(format(), page_, row, flags);
    }
    ByteList Start(std::size_t size) const {
        return {page_.begin(), page_.begin() + static_cast<std::ptrdiff_t>(size)};
    }

    std::vector<std::uint8_t> page_ = jet::MakeDataPage(format(), IsJet4() ? 16 : 20);
};

TEST_P(DataPageWriter, PutsRowsWhereJetPutsThem) {
    EXPECT_EQ(Append(Hex(IsJet4() ? kRexJet4 : kRexJet3)), 0);
    EXPECT_EQ(Append(Hex(IsJet4() ? kAlJet4 : kAlJet3)), 1);
    const ByteList head = Hex(IsJet4() ? "01 01 BB 0F 10 00 00 00 00 00 00 00 02 00 E6 0F CD 0F"
                                       : "01 01 CB 07 14 00 00 00 02 00 EC 07 D9 07");
    EXPECT_EQ(Start(head.size()), head);
    const auto al = jet::RowBytes(format(), page_, 1);
    EXPECT_EQ(ByteList(al.begin(), al.end()), Hex(IsJet4() ? kAlJet4 : kAlJet3));
    const auto rex = jet::RowBytes(format(), page_, 0);
    EXPECT_EQ(ByteList(rex.begin(), rex.end()), Hex(IsJet4() ? kRexJet4 : kRexJet3));
    EXPECT_EQ(rex.data() + rex.size(), page_.data() + page_.size());
}

TEST_P(DataPageWriter, MarksTheSlotWithTheFlagsGiven) {
    EXPECT_EQ(Append(Hex("01 02 03 04"), jet::kSlotHidden), 0);
    const std::size_t start = format().page_size - 4;
    EXPECT_EQ(jet::LoadU16(page_, format().data_page.slots), start | 0x8000);
    EXPECT_EQ(jet::RowBytes(format(), page_, 0).size(), 4U);
}

TEST_P(DataPageWriter, FillsAPageToTheLastByte) {
    const std::size_t room = format().page_size - format().data_page.slots;
    EXPECT_EQ(Append(ByteList(room - 1)), std::nullopt);
    EXPECT_EQ(Append(ByteList(room - 2 - 12)), 0);
    EXPECT_EQ(Append(ByteList(11)), std::nullopt);
    EXPECT_EQ(Append(ByteList(10)), 1);
    EXPECT_EQ(jet::LoadU16(page_, 2), 0);
    EXPECT_EQ(Append({}), std::nullopt);
}

TEST_P(DataPageWriter, GivesNoPageMoreThan255Rows) {
    for (int i = 0; i < 255; ++i)
        ASSERT_EQ(Append(Hex("01 02 03 04")), i);
    EXPECT_EQ(Append(Hex("01 02 03 04")), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, DataPageWriter, kBothGenerations, GenerationName);

class ChangedDataPage : public DataPageWriter {
protected:
    void SetUp() override {
        for (std::uint8_t i = 0; i < 4; ++i)
            ASSERT_EQ(Append(ByteList(10, static_cast<std::uint8_t>(i + 1))), i);
    }

    bool Resize(std::uint8_t slot, std::size_t size) { return jet::ResizeRow(format(), page_, slot, size); }
    ByteList RowAt(std::uint8_t slot) {
        const auto row = jet::RowBytes(format(), page_, slot);
        return {row.begin(), row.end()};
    }
    void ExpectOthersUnchanged(std::uint8_t changed) {
        for (std::uint8_t i = 0; i < 4; ++i) {
            if (i != changed) {
                EXPECT_EQ(RowAt(i), ByteList(10, static_cast<std::uint8_t>(i + 1))) << int{i};
            }
        }
        EXPECT_TRUE(jet::HasSoundRows(format(), page_));
        EXPECT_EQ(jet::LoadU16(page_, format().data_page.free_bytes), jet::FreeBytes(format(), page_));
    }
    void SetSlot(std::size_t slot, std::size_t start) {
        jet::StoreLittle(page_, format().data_page.slots + 2 * slot, static_cast<std::uint16_t>(start));
    }
};

TEST_P(ChangedDataPage, HasRowsThatGrowByZeros) {
    for (std::uint8_t slot = 0; slot < 4; ++slot) {
        const std::size_t free = jet::FreeBytes(format(), page_);
        ASSERT_TRUE(Resize(slot, 25));
        ByteList grown(10, static_cast<std::uint8_t>(slot + 1));
        grown.resize(25);
        EXPECT_EQ(RowAt(slot), grown);
        EXPECT_EQ(jet::FreeBytes(format(), page_), free - 15);
        ExpectOthersUnchanged(slot);
        ASSERT_TRUE(Resize(slot, 10));
        ExpectOthersUnchanged(4);
    }
}

TEST_P(ChangedDataPage, HasRowsThatShrinkAtTheirEnd) {
    for (std::uint8_t slot = 0; slot < 4; ++slot) {
        const std::size_t free = jet::FreeBytes(format(), page_);
        jet::RowBytes(format(), page_, slot)[0] = 99;
        ASSERT_TRUE(Resize(slot, 3));
        EXPECT_EQ(RowAt(slot)[0], 99);
        EXPECT_EQ(RowAt(slot).size(), 3U);
        EXPECT_EQ(jet::FreeBytes(format(), page_), free + 7);
        ExpectOthersUnchanged(slot);
        ASSERT_TRUE(Resize(slot, 10));
        std::fill_n(jet::RowBytes(format(), page_, slot).begin(), 10, static_cast<std::uint8_t>(slot + 1));
    }
}

TEST_P(ChangedDataPage, HasRowsThatTakeAllTheRoomAndNoMore) {
    const std::size_t free = jet::FreeBytes(format(), page_);
    const std::vector<std::uint8_t> before = page_;
    EXPECT_FALSE(Resize(1, 10 + free + 1));
    EXPECT_EQ(page_, before);
    EXPECT_TRUE(Resize(1, 10 + free));
    EXPECT_EQ(jet::FreeBytes(format(), page_), 0U);
    ExpectOthersUnchanged(1);
    EXPECT_TRUE(Resize(1, 0));
    EXPECT_EQ(jet::FreeBytes(format(), page_), free + 10);
    ExpectOthersUnchanged(1);
}

TEST_P(ChangedDataPage, HasFlagsThatChangeWithoutTheRow) {
    jet::SetSlotFlags(format(), page_, 2, jet::kSlotPointer);
    EXPECT_EQ(jet::LoadU16(page_, format().data_page.slots + 4), (format().page_size - 30) | 0x4000);
    ExpectOthersUnchanged(4);
    ASSERT_TRUE(Resize(2, 4));
    EXPECT_EQ(jet::LoadU16(page_, format().data_page.slots + 4), (format().page_size - 24) | 0x4000);
    jet::SetSlotFlags(format(), page_, 2, 0);
    EXPECT_EQ(jet::LoadU16(page_, format().data_page.slots + 4), format().page_size - 24);
}

TEST_P(ChangedDataPage, HasLiveRowsUntilAllAreDeleted) {
    for (std::uint8_t slot = 0; slot < 4; ++slot) {
        EXPECT_TRUE(jet::HasLiveRows(format(), page_));
        jet::SetSlotFlags(format(), page_, slot, jet::kSlotDeleted);
    }
    EXPECT_FALSE(jet::HasLiveRows(format(), page_));
    jet::SetSlotFlags(format(), page_, 2, jet::kSlotHidden);
    EXPECT_TRUE(jet::HasLiveRows(format(), page_));
    jet::SetSlotFlags(format(), page_, 2, jet::kSlotPointer);
    EXPECT_TRUE(jet::HasLiveRows(format(), page_));
}

TEST_P(ChangedDataPage, IsNotSoundWithRowsThatAscendOrLieInTheSlots) {
    const std::size_t end = format().page_size;
    SetSlot(1, end - 9);
    EXPECT_FALSE(jet::HasSoundRows(format(), page_));
    SetSlot(1, end - 10);
    EXPECT_TRUE(jet::HasSoundRows(format(), page_)) << "an empty row";
    SetSlot(3, format().data_page.slots + 8);
    EXPECT_TRUE(jet::HasSoundRows(format(), page_)) << "no room left";
    SetSlot(3, format().data_page.slots + 7);
    EXPECT_FALSE(jet::HasSoundRows(format(), page_));
    SetSlot(3, 0);
    EXPECT_FALSE(jet::HasSoundRows(format(), page_));
}

TEST_P(ChangedDataPage, IsNotSoundWithMoreSlotsThanItCanHave) {
    for (const std::uint16_t slots : {std::uint16_t{257}, std::uint16_t{0xFFFF}}) {
        jet::StoreLittle(page_, format().data_page.slot_count, slots);
        EXPECT_FALSE(jet::HasSoundRows(format(), page_));
    }
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, ChangedDataPage, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
