#include "long_value.h"

#include <gtest/gtest.h>

#include "byte_order.h"
#include "file_image.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::Generation;
using jet::LongValue;

constexpr jet::RowId kSomeRow{.page = 17, .slot = 3};

ByteList Field(std::uint32_t length_and_kind, jet::RowId place, const ByteList& inside = {}) {
    ByteList field;
    AppendLittle(field, length_and_kind);
    AppendLittle(field, place.page << 8 | place.slot);
    AppendLittle(field, std::uint32_t{0});
    Append(field, inside);
    return field;
}

ByteList Piece(jet::RowId next, const ByteList& data) {
    ByteList piece;
    AppendLittle(piece, next.page << 8 | next.slot);
    Append(piece, data);
    return piece;
}

class LongValueOf : public testing::TestWithParam<Generation> {
protected:
    ByteList Read(const ByteList& field) {
        jet::Pager pager(jet::MakeMemoryFile(file_.Finish()), file_.format());
        jet::LongValueReader reader(pager);
        const jet::Bytes data = reader.Read(jet::ParseLongValue(field, kSomeRow));
        return {data.begin(), data.end()};
    }

    int ErrorReading(const ByteList& field) {
        return ErrorOf([&] { Read(field); });
    }

    FileImage file_{GetParam()};
    jet::PageNumber page_ = file_.AddDataPage(jet::kLongValueOwner);
};

TEST_P(LongValueOf, InsideTheRowFollowsItsHeader) {
    EXPECT_EQ(Read(Field(0x80000003, {}, {1, 2, 3})), (ByteList{1, 2, 3}));
    EXPECT_EQ(Read(Field(0x80000002, {}, {1, 2, 3})), (ByteList{1, 2}));
}

TEST_P(LongValueOf, NoBytesAtAllIsEmpty) {
    EXPECT_EQ(Read({}), ByteList{});
    EXPECT_EQ(Read(Field(0x80000000, {})), ByteList{});
    EXPECT_EQ(Read(Field(0, {})), ByteList{}) << "a chain without a piece";
}

TEST_P(LongValueOf, OneRowHoldsAllOfIt) {
    const jet::RowId place = file_.AddRow(page_, {4, 5, 6});
    EXPECT_EQ(Read(Field(0x40000003, place)), (ByteList{4, 5, 6}));
}

TEST_P(LongValueOf, AChainIsJoined) {
    const jet::PageNumber other_page = file_.AddDataPage(jet::kLongValueOwner);
    const jet::RowId third = file_.AddRow(page_, Piece({}, {7}));
    const jet::RowId second = file_.AddRow(other_page, Piece(third, {5, 6}));
    const jet::RowId first = file_.AddRow(page_, Piece(second, {1, 2, 3, 4}));
    EXPECT_EQ(Read(Field(7, first)), (ByteList{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(Read(Field(6, first)), (ByteList{1, 2, 3, 4, 5, 6})) << "the length decides";
}

TEST_P(LongValueOf, AChainThatRunsInACircleIsDamaged) {
    const jet::RowId second = file_.AddRow(page_, Piece({}, {5, 6}));
    const jet::RowId first = file_.AddRow(page_, Piece(second, {1, 2, 3, 4}));
    jet::StoreRowPointer(file_.row(second), 0, first);
    EXPECT_EQ(Read(Field(6, first)).size(), 6U);
    EXPECT_EQ(ErrorReading(Field(4000, first)), kDamaged);
}

TEST_P(LongValueOf, AChainOfEmptyPiecesIsDamaged) {
    const jet::RowId second = file_.AddRow(page_, Piece({}, {5, 6}));
    const jet::RowId first = file_.AddRow(page_, Piece(second, {}));
    EXPECT_EQ(ErrorReading(Field(2, first)), kDamaged);
}

TEST_P(LongValueOf, ThatEndsEarlyIsDamaged) {
    const jet::RowId whole = file_.AddRow(page_, {4, 5, 6});
    const jet::RowId piece = file_.AddRow(page_, Piece({}, {5, 6}));
    EXPECT_EQ(ErrorReading(Field(0x40000004, whole)), kDamaged);
    EXPECT_EQ(ErrorReading(Field(3, piece)), kDamaged);
    EXPECT_EQ(ErrorReading(Field(0x80000004, {}, {1, 2, 3})), kDamaged);
    EXPECT_EQ(ErrorReading({1, 2, 3}), kDamaged) << "no whole header";
}

TEST_P(LongValueOf, ThatIsLongerThanTheFileIsDamaged) {
    const jet::RowId place = file_.AddRow(page_, {4, 5, 6});
    EXPECT_EQ(ErrorReading(Field(0x7FFFFFFF, place)), kDamaged);
    EXPECT_EQ(ErrorReading(Field(0x3FFFFFFF, place)), kDamaged);
}

TEST_P(LongValueOf, OfAnUnknownKindIsDamaged) {
    EXPECT_EQ(ErrorReading(Field(0xC0000001, {}, {1})), kDamaged);
}

TEST_P(LongValueOf, OutsideLongValuePagesIsDamaged) {
    const jet::RowId place = file_.AddRow(file_.AddDataPage(99), {4, 5, 6});
    EXPECT_EQ(ErrorReading(Field(0x40000003, place)), kDamaged);
    EXPECT_EQ(ErrorReading(Field(0x40000003, {0, 0})), kDamaged);
    EXPECT_EQ(ErrorReading(Field(0x40000003, {0xFFFFFF, 0})), kDamaged);
    EXPECT_EQ(ErrorReading(Field(0x40000003, {page_, 200})), kDamaged);
}

TEST_P(LongValueOf, InADeletedRowIsDamaged) {
    const jet::RowId place = file_.AddRow(page_, {4, 5, 6});
    file_.SetFlags(place, jet::kSlotDeleted);
    EXPECT_EQ(ErrorReading(Field(0x40000003, place)), kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, LongValueOf, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
