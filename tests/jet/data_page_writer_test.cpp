#include "data_page_writer.h"

#include <gtest/gtest.h>

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

}  // namespace

}  // namespace ledgix::test
