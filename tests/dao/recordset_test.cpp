#include "recordset.h"

#include <gtest/gtest.h>

#include "error_of.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;

Recordset Rows(std::vector<std::int32_t> numbers, RecordsetType type = kOpenDynaset) {
    std::vector<Variant> values(numbers.begin(), numbers.end());
    const std::size_t count = values.size();
    return Recordset(type, Collection<Field>({Field{"Number", kLong, 4, 0}}), std::move(values), count);
}

TEST(Recordset, StartsOnTheFirstRow) {
    const Recordset rows = Rows({7, 8});
    EXPECT_FALSE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows["Number"], Variant(7));
}

TEST(Recordset, WithoutRowsIsAtBothEnds) {
    const Recordset rows = Rows({});
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
}

TEST(Recordset, MovesBehindTheLastRowAndNoFurther) {
    Recordset rows = Rows({7});
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_FALSE(rows.Bof());
    EXPECT_ERROR(rows.MoveNext(), ErrorNumber::kNoCurrentRecord);
}

TEST(Recordset, MovesBeforeTheFirstRowAndNoFurther) {
    Recordset rows = Rows({7});
    rows.MovePrevious();
    EXPECT_TRUE(rows.Bof());
    EXPECT_ERROR(rows.MovePrevious(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows["Number"], ErrorNumber::kNoCurrentRecord);
    rows.MoveNext();
    EXPECT_EQ(rows["Number"], Variant(7));
}

TEST(Recordset, GoesToFirstAndLast) {
    Recordset rows = Rows({7, 8, 9});
    rows.MoveLast();
    EXPECT_EQ(rows["Number"], Variant(9));
    rows.MoveFirst();
    EXPECT_EQ(rows["Number"], Variant(7));
}

TEST(Recordset, WithoutRowsThereIsNothingToMoveTo) {
    Recordset rows = Rows({});
    EXPECT_ERROR(rows.MoveFirst(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows.MoveLast(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows.MoveNext(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows["Number"], ErrorNumber::kNoCurrentRecord);
}

TEST(Recordset, ForwardOnlyDoesNotGoBack) {
    Recordset rows = Rows({7, 8}, kOpenForwardOnly);
    rows.MoveNext();
    EXPECT_ERROR(rows.MovePrevious(), ErrorNumber::kInvalidOperationForType);
    EXPECT_ERROR(rows.MoveFirst(), ErrorNumber::kInvalidOperationForType);
    EXPECT_ERROR(rows.MoveLast(), ErrorNumber::kInvalidOperationForType);
}

TEST(Recordset, FieldsAreFoundInAnyCase) {
    const Recordset rows = Rows({7});
    EXPECT_EQ(rows["nUMBER"], Variant(7));
    EXPECT_EQ(rows[std::size_t{0}], Variant(7));
    EXPECT_ERROR(rows["Nummer"], ErrorNumber::kItemNotFound);
    EXPECT_ERROR(rows[std::size_t{1}], ErrorNumber::kItemNotFound);
}

TEST(Recordset, ClosedItAnswersNothing) {
    Recordset rows = Rows({7});
    rows.Close();
    EXPECT_ERROR(rows.Eof(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows.Bof(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows.MoveNext(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows["Number"], ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows.RecordCount(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows.Close(), ErrorNumber::kObjectClosed);
}

}  // namespace
}  // namespace ledgix::dao
