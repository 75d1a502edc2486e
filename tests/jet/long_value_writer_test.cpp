#include "long_value_writer.h"

#include "byte_order.h"
#include "hex.h"
#include "long_value.h"
#include "row_reader.h"
#include "usage_map.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using jet::PageNumber;
using jet::RowId;
using Kind = jet::LongValue::Kind;
using runtime::Null;

constexpr int kConversion = 3421;
constexpr int kNotAvailable = 3251;

class LongValueWriter : public WrittenDatabase {
protected:
    void SetUp() override {
        MakeTable({{.name = "Id"}, {.name = "Text", .type = kMemo}, {.name = "Data", .type = kOle}});
    }

    static runtime::Binary Data(std::size_t size) {
        runtime::Binary data(size);
        for (std::size_t i = 0; i < size; ++i)
            data[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
        return data;
    }
    RowId InsertData(std::size_t size) { return Insert({1, Null{}, Data(size)}); }

    // What the row holds in the column at this position.
    ByteList Field(RowId row, std::size_t position) {
        const jet::TableDefinition table = Table();
        jet::RowReader reader(file(), table);
        EXPECT_TRUE(reader.Load(row));
        const auto stored = reader.Stored(position).value();
        return {stored.begin(), stored.end()};
    }
    Kind KindOf(RowId row, std::size_t position = 2) {
        const ByteList field = Field(row, position);
        return jet::ParseLongValue(field, row).kind;
    }
    std::size_t Length(RowId row, std::size_t position) {
        const ByteList field = Field(row, position);
        return jet::ParseLongValue(field, row).length;
    }

    std::vector<PageNumber> Owned(std::size_t position) {
        return jet::ReadUsageMap(pager(), Table().columns[position].owned_map);
    }
    std::vector<PageNumber> WithFreeSpace(std::size_t position) {
        return jet::ReadUsageMap(pager(), Table().columns[position].free_space_map);
    }
};

TEST_P(LongValueWriter, KeepsShortDataInTheRow) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, format().longest_inside_value}) {
        const RowId row = InsertData(size);
        EXPECT_EQ(KindOf(row), Kind::kInside);
        EXPECT_EQ(Field(row, 2).size(), 12 + size);
        EXPECT_EQ(Row(row)[2], runtime::Variant(Data(size)));
    }
    EXPECT_TRUE(Owned(2).empty());
}

TEST_P(LongValueWriter, KeepsLongerDataInOneRowOfTheirOwn) {
    for (const std::size_t size : {format().longest_inside_value + 1, format().longest_value_row}) {
        const RowId row = InsertData(size);
        EXPECT_EQ(KindOf(row), Kind::kOneRow);
        EXPECT_EQ(Field(row, 2).size(), 12U);
        EXPECT_EQ(Row(row)[2], runtime::Variant(Data(size)));
    }
    EXPECT_EQ(Owned(2).size(), 2U) << "the longest takes a whole page";
}

TEST_P(LongValueWriter, KeepsTheLongestDataInAChain) {
    const std::size_t piece = format().longest_value_row - 4;
    for (const std::size_t size : {piece + 5, 2 * piece, 2 * piece + 1, 20 * piece + 77}) {
        const std::size_t pages = Owned(2).size();
        const RowId row = InsertData(size);
        EXPECT_EQ(KindOf(row), Kind::kChain) << size;
        EXPECT_EQ(Row(row)[2], runtime::Variant(Data(size))) << size;
        EXPECT_GE(Owned(2).size() - pages, size / piece) << size;
    }
}

TEST_P(LongValueWriter, PutsSeveralValuesOnAPage) {
    for (int i = 0; i < 10; ++i)
        InsertData(100);
    EXPECT_EQ(Owned(2).size(), 1U);
    EXPECT_EQ(WithFreeSpace(2), Owned(2));
}

TEST_P(LongValueWriter, GivesPagesBackThatNobodyNeeds) {
    const std::size_t piece = format().longest_value_row - 4;
    const RowId one_row = InsertData(200);
    const RowId chain = InsertData(10 * piece);
    Update(chain, {{.column = 2, .value = Data(5)}});
    EXPECT_EQ(Owned(2).size(), 1U);
    Update(one_row, {{.column = 2, .value = Null{}}});
    EXPECT_TRUE(Owned(2).empty());
    EXPECT_TRUE(WithFreeSpace(2).empty());
    const PageNumber pages = pager().page_count();
    const RowId again = InsertData(10 * piece);
    EXPECT_EQ(pager().page_count(), pages);
    Delete(again);
    EXPECT_TRUE(Owned(2).empty());
}

TEST_P(LongValueWriter, LeavesTheValuesBesideAFreedOneAlone) {
    const RowId first = InsertData(100);
    const RowId second = InsertData(120);
    const RowId third = InsertData(140);
    Delete(second);
    EXPECT_EQ(Row(first)[2], runtime::Variant(Data(100)));
    EXPECT_EQ(Row(third)[2], runtime::Variant(Data(140)));
    const RowId fourth = InsertData(90);
    EXPECT_EQ(Owned(2).size(), 1U);
    EXPECT_EQ(Row(fourth)[2], runtime::Variant(Data(90)));
}

TEST_P(LongValueWriter, KeepsValuesWhoseRowChangesElsewhere) {
    const RowId row = Insert({1, std::string(5000, 'x'), Data(9000)});
    const auto owned = Owned(2);
    Update(row, {{.column = 0, .value = 2}, {.column = 1, .value = "short"}});
    EXPECT_EQ(Row(row), (RowValues{2, "short", Data(9000)}));
    EXPECT_EQ(Owned(2), owned);
    EXPECT_TRUE(Owned(1).empty());
}

// Pages of the second value lie far behind those of the first.
TEST_P(LongValueWriter, KeepsColumnsWhosePagesLieFarApart) {
    const std::size_t piece = format().longest_value_row - 4;
    const RowId first = InsertData(3 * piece);
    const RowId between = Insert({2, std::string(1400 * piece, 'x'), Null{}});
    const RowId last = InsertData(3 * piece);
    EXPECT_EQ(Owned(2).size(), 6U);
    EXPECT_GT(Owned(2).back() - Owned(2).front(), 600U);
    EXPECT_EQ(Row(first)[2], runtime::Variant(Data(3 * piece)));
    EXPECT_EQ(Row(last)[2], runtime::Variant(Data(3 * piece)));
    EXPECT_EQ(std::get<std::string>(Row(between)[1]).size(), 1400 * piece);
    EXPECT_EQ(Faults(file()), "");
    for (const RowId row : {first, between, last})
        Delete(row);
    EXPECT_TRUE(Owned(1).empty());
    EXPECT_TRUE(Owned(2).empty());
}

TEST_P(LongValueWriter, StoresTextAsTheGenerationDoes) {
    const auto length = [&](const std::string& text) { return Length(Insert({1, text, Null{}}), 1); };
    EXPECT_EQ(length("abcdefgh"), IsJet4() ? 10U : 8U) << "one byte a character, behind a mark";
    EXPECT_EQ(length("ab"), IsJet4() ? 4U : 2U);
    EXPECT_EQ(length("abc\u20AC"), IsJet4() ? 8U : 4U);
    EXPECT_EQ(length(""), 0U);
    std::string longest(9999, 'a');
    longest += "\u00E9\u20AC\r\n";
    EXPECT_EQ(Row(Insert({1, longest, Null{}}))[1], runtime::Variant(longest));
    EXPECT_EQ(Row(Insert({1, "", Null{}}))[1], runtime::Variant(""));
}

TEST_P(LongValueWriter, RefusesValuesOfAnotherType) {
    EXPECT_EQ(ErrorInserting({1, runtime::Binary{1}, Null{}}), kConversion);
    EXPECT_EQ(ErrorInserting({1, 5, Null{}}), kConversion);
    EXPECT_EQ(ErrorInserting({1, Null{}, "text"}), kConversion);
    EXPECT_TRUE(Rows().empty());
}

TEST_P(LongValueWriter, RefusesTextThatTheFileCannotHold) {
    EXPECT_EQ(ErrorInserting({1, "\u4E2D", Null{}}), IsJet4() ? 0 : kNotAvailable);
}

TEST_P(LongValueWriter, RefusesToFollowAChainThatRunsInACircle) {
    LeaveUnsound();
    const RowId row = InsertData(3 * format().longest_value_row);
    const ByteList field = Field(row, 2);
    const RowId place = jet::ParseLongValue(field, row).place;
    EXPECT_EQ(ErrorChanging([&] {
                  const auto page = pager().Change(place.page);
                  const std::size_t at = jet::LoadU16(page, format().data_page.slots + 2 * place.slot);
                  jet::StoreRowPointer(page, at, place);
                  jet::TableWriter(file(), Table()).Delete(row);
              }),
              kDamaged);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, LongValueWriter, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
