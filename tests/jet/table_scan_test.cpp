#include "table_scan.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "byte_order.h"
#include "database_builder.h"
#include "hex.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using jet::Generation;
using runtime::Null;
using runtime::Variant;

// Scans of one table under construction.
class TableScan : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    FileImage& image() { return builder_.file(); }

    TableBuilder& Table(std::vector<ColumnSpec> columns) {
        table_ = &builder_.AddTable("T", std::move(columns));
        return *table_;
    }

    // All rows, from the file as it is now.
    std::vector<Values> Rows() {
        if (!file_)
            file_.emplace(builder_.Open());
        const jet::TableDefinition table = file_->ReadTableDefinition(table_->page());
        std::vector<Values> rows;
        jet::TableScan scan(*file_, table);
        while (scan.Next()) {
            ids_.push_back(scan.id());
            Values& row = rows.emplace_back();
            for (std::size_t i = 0; i < table.columns.size(); ++i) {
                row.push_back(scan.Value(i));
                EXPECT_EQ(scan.IsNull(i), runtime::IsNull(row.back()));
            }
        }
        return rows;
    }

    int ErrorInRows() {
        return ErrorOf([&] { Rows(); });
    }

    DatabaseBuilder builder_{GetParam()};
    TableBuilder* table_ = nullptr;
    std::optional<jet::DatabaseFile> file_;
    std::vector<jet::RowId> ids_;
};

TEST_P(TableScan, OfAnEmptyTableEndsAtOnce) {
    Table({{.name = "Id"}});
    EXPECT_EQ(Rows(), std::vector<Values>{});
}

TEST_P(TableScan, GivesTheValuesOfAllTypes) {
    TableBuilder& table = Table({{.name = "Boolean", .type = kBoolean},
                                 {.name = "Byte", .type = kByte},
                                 {.name = "Int16", .type = kInt16},
                                 {.name = "Int32", .type = kInt32},
                                 {.name = "Currency", .type = kCurrency},
                                 {.name = "Single", .type = kSingle},
                                 {.name = "Double", .type = kDouble},
                                 {.name = "Date", .type = kDate},
                                 {.name = "Binary", .type = kBinary, .characters = 10},
                                 {.name = "Text", .type = kText, .characters = 10},
                                 {.name = "Ole", .type = kOle},
                                 {.name = "Memo", .type = kMemo},
                                 {.name = "Guid", .type = kGuid}});
    const runtime::Guid guid{{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 1, 2, 3, 4, 5, 6, 7, 8}};
    const Values values{true,
                        std::uint8_t{200},
                        std::int16_t{-32768},
                        std::numeric_limits<std::int32_t>::min(),
                        runtime::Currency{std::numeric_limits<std::int64_t>::min()},
                        -1.5F,
                        444.555,
                        runtime::Date{-1.25},
                        runtime::Binary{0, 1, 2},
                        "\u00E4\u20AC",
                        runtime::Binary{0, 9},
                        "a memo",
                        guid};
    Values nulls(values.size());
    nulls[0] = false;
    table.AddRow(values);
    table.AddRow(nulls);
    EXPECT_EQ(Rows(), (std::vector<Values>{values, nulls}));
}

TEST_P(TableScan, TellsEmptyTextFromNull) {
    TableBuilder& table = Table({{.name = "A", .type = kText, .characters = 9}, {.name = "B", .type = kMemo}});
    table.AddRow({"", ""});
    table.AddRow({Null{}, Null{}});
    EXPECT_EQ(Rows(), (std::vector<Values>{{"", ""}, {Null{}, Null{}}}));
}

TEST_P(TableScan, ReadsNumbersThatAreStoredAsVariable) {
    TableBuilder& table = Table({{.name = "A", .type = kInt32, .stored_variable = true},
                                 {.name = "B"},
                                 {.name = "C", .type = kDate, .stored_variable = true}});
    const std::vector<Values> rows{{-5, 7, runtime::Date{36526.5}}, {Null{}, 8, runtime::Date{1}}, {1, 2, Null{}}};
    for (const Values& row : rows)
        table.AddRow(row);
    EXPECT_EQ(Rows(), rows);
}

TEST_P(TableScan, OfANumberOfTheWrongLengthIsDamage) {
    TableBuilder& table = Table({{.name = "A", .type = kBinary, .characters = 9}});
    table.AddRow({runtime::Binary{1, 2, 3}});
    builder_.Finish();
    const jet::Format& format = image().format();
    image().page(table.page())[format.definition.statistics + format.column.type] = static_cast<std::uint8_t>(kInt32);
    file_.emplace(jet::MakeMemoryFile(image().Finish()));
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, GivesUnknownTypesAsBytes) {
    TableBuilder& table = Table({{.name = "A", .type = static_cast<jet::ColumnType>(200), .characters = 9},
                                 {.name = "B", .type = static_cast<jet::ColumnType>(13), .characters = 9}});
    table.AddRow({runtime::Binary{1, 2, 3}, Null{}});
    EXPECT_EQ(Rows(), (std::vector<Values>{{runtime::Binary{1, 2, 3}, Null{}}}));
}

TEST_P(TableScan, ReadsTextLongerThanItsColumn) {
    TableBuilder& table = Table({{.name = "A", .type = kText, .characters = 3}});
    table.AddRow({"longer than three"});
    EXPECT_EQ(Rows(), (std::vector<Values>{{"longer than three"}}));
}

TEST_P(TableScan, GivesRowsPageByPage) {
    TableBuilder& table = Table({{.name = "Id"}});
    std::vector<Values> rows;
    for (int i = 0; i < 1000; ++i) {
        rows.push_back({i});
        table.AddRow(rows.back());
    }
    EXPECT_EQ(Rows(), rows);
    EXPECT_TRUE(std::is_sorted(ids_.begin(), ids_.end(), [](jet::RowId a, jet::RowId b) {
        return std::pair(a.page, a.slot) < std::pair(b.page, b.slot);
    }));
    EXPECT_GT(ids_.back().page, ids_.front().page);
}

TEST_P(TableScan, SkipsDeletedRowsWithAndWithoutBytes) {
    TableBuilder& table = Table({{.name = "Id"}});
    std::vector<jet::RowId> ids;
    for (int i = 0; i < 5; ++i)
        ids.push_back(table.AddRow({i}));
    table.Delete(ids[0]);
    table.Delete(ids[3], true);
    EXPECT_EQ(Rows(), (std::vector<Values>{{1}, {2}, {4}}));
    EXPECT_EQ(ids_, (std::vector<jet::RowId>{ids[1], ids[2], ids[4]}));
}

TEST_P(TableScan, ShowsAMovedRowOnceInItsHomeSlot) {
    TableBuilder& table = Table({{.name = "Id"}, {.name = "Text", .type = kText, .characters = 200}});
    const jet::RowId first = table.AddRow({1, "one"});
    const jet::RowId second = table.AddRow({2, "two"});
    table.Move(first, {1, "one has moved"});
    EXPECT_EQ(Rows(), (std::vector<Values>{{1, "one has moved"}, {2, "two"}}));
    EXPECT_EQ(ids_, (std::vector<jet::RowId>{first, second}));
}

TEST_P(TableScan, FollowsAPointerToAPointer) {
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId home = table.AddRow({1});
    const jet::RowId between = table.AddRow({2});
    table.Move(between, {3});
    jet::StoreRowPointer(image().row(home), 0, between);
    image().SetFlags(home, jet::kSlotPointer);
    EXPECT_EQ(Rows(), (std::vector<Values>{{3}, {3}}));
}

TEST_P(TableScan, OfPointersInACircleIsDamage) {
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId a = table.AddRow({1});
    const jet::RowId b = table.AddRow({2});
    jet::StoreRowPointer(image().row(a), 0, b);
    jet::StoreRowPointer(image().row(b), 0, a);
    image().SetFlags(a, jet::kSlotPointer);
    image().SetFlags(b, jet::kSlotPointer);
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, OfAPointerToALiveRowIsDamage) {
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId home = table.AddRow({1});
    const jet::RowId other = table.AddRow({2});
    jet::StoreRowPointer(image().row(home), 0, other);
    image().SetFlags(home, jet::kSlotPointer);
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, OfAPointerToADeletedRowIsDamage) {
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId home = table.AddRow({1});
    const jet::RowId hidden = table.Move(home, {2});
    table.Delete(hidden, true);
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, OfAPointerToAnotherTableIsDamage) {
    TableBuilder& other = builder_.AddTable("Other", {{.name = "Id"}});
    const jet::RowId elsewhere = other.AddEncodedRow(other.Encode({9}), jet::kSlotHidden);
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId home = table.AddRow({1});
    jet::StoreRowPointer(image().row(home), 0, elsewhere);
    image().SetFlags(home, jet::kSlotPointer);
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, ReadsRowsFromBeforeColumnsWereAdded) {
    TableBuilder& table = Table({{.name = "Id"}, {.name = "A", .type = kText, .characters = 9}});
    table.AddRow({1, "a"});
    table.AddColumn({.name = "B", .type = kText, .characters = 9});
    table.AddColumn({.name = "C", .type = kDouble});
    table.AddColumn({.name = "D", .type = kBoolean});
    table.AddRow({2, "b", "c", 2.5, true});
    EXPECT_EQ(Rows(), (std::vector<Values>{{1, "a", Null{}, Null{}, false}, {2, "b", "c", 2.5, true}}));
}

TEST_P(TableScan, ReadsRowsFromBeforeTheFirstVariableColumn) {
    TableBuilder& table = Table({{.name = "Id"}, {.name = "Small", .type = kInt16}});
    for (const int i : {0, 1, 255, 256, 65535, -1})
        table.AddRow({i, static_cast<std::int16_t>(i)});
    table.AddColumn({.name = "Text", .type = kText, .characters = 9});
    const auto old_row = [](int id) { return Values{id, static_cast<std::int16_t>(id), Null{}}; };
    EXPECT_EQ(Rows(),
              (std::vector<Values>{old_row(0), old_row(1), old_row(255), old_row(256), old_row(65535), old_row(-1)}));
}

TEST_P(TableScan, IgnoresTheValuesOfDroppedColumns) {
    TableBuilder& table = Table({{.name = "A", .type = kText, .characters = 9},
                                 {.name = "B", .type = kDouble},
                                 {.name = "C", .type = kText, .characters = 9},
                                 {.name = "D", .type = kInt16}});
    table.AddRow({"a", 1.5, "c", std::int16_t{4}});
    table.DropColumn("A");
    table.DropColumn("B");
    table.AddRow({"c2", std::int16_t{5}});
    EXPECT_EQ(Rows(), (std::vector<Values>{{"c", std::int16_t{4}}, {"c2", std::int16_t{5}}}));
}

TEST_P(TableScan, OfAnOwnedPageOfAnotherTableIsDamage) {
    TableBuilder& table = Table({{.name = "Id"}});
    const jet::RowId row = table.AddRow({1});
    jet::StoreLittle(image().page(row.page), image().format().data_page.owner, std::uint32_t{2});
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

// Every row names the same long value: together they would be many times the file.
TEST_P(TableScan, GivesUpOnLongValuesThatRowsHaveInCommon) {
    TableBuilder& table = Table({{.name = "Remarks", .type = kMemo}});
    const ByteList row = table.Encode({std::string(20000, 'x')});
    for (int i = 0; i < 100; ++i)
        table.AddEncodedRow(row);
    EXPECT_EQ(ErrorInRows(), kDamaged);
}

TEST_P(TableScan, MayReadALongValueAgainAndAgain) {
    TableBuilder& table = Table({{.name = "Remarks", .type = kMemo}});
    table.AddRow({std::string(20000, 'x')});
    jet::DatabaseFile file = builder_.Open();
    const jet::TableDefinition definition = file.ReadTableDefinition(table.page());
    jet::TableScan scan(file, definition);
    ASSERT_TRUE(scan.Next());
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(std::get<std::string>(scan.Value(0)).size(), 20000U);
}

TEST_P(TableScan, ReadsMemosOfAllKinds) {
    TableBuilder& table = Table({{.name = "Id"}, {.name = "Remarks", .type = kMemo, .compressed = true}});
    const std::string one_row = "one row" + std::string(500, '.');
    const std::string chain = "chain" + std::string(30000, '-');
    const std::string with_zero("ends in a zero\0", 15);
    table.AddRow({1, "inside"});
    table.AddRow({2, one_row});
    table.AddRow({3, chain});
    table.AddRow({4, with_zero});
    EXPECT_EQ(Rows(), (std::vector<Values>{{1, "inside"}, {2, one_row}, {3, chain}, {4, with_zero}}));
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, TableScan, kBothGenerations, GenerationName);

TEST(TableScanOfJet4, GivesNumericsWithTheirScale) {
    DatabaseBuilder builder(Generation::kJet4);
    TableBuilder& table = builder.AddTable("T", {{.name = "A", .type = kNumeric, .precision = 28, .scale = 6}});
    const runtime::Decimal low{.negative = true, .scale = 6, .magnitude = {0, 1, 2, 3}};
    const runtime::Decimal zero{.negative = false, .scale = 6, .magnitude = {}};
    table.AddRow({low});
    table.AddRow({zero});
    jet::DatabaseFile file = builder.Open();
    const jet::TableDefinition definition = file.ReadTableDefinition(table.page());
    jet::TableScan scan(file, definition);
    ASSERT_TRUE(scan.Next());
    EXPECT_EQ(scan.Value(0), Variant{low});
    ASSERT_TRUE(scan.Next());
    EXPECT_EQ(scan.Value(0), Variant{zero});
}

TEST(RowReader, LoadsALiveRowByItsHomeSlot) {
    DatabaseBuilder builder(Generation::kJet4);
    TableBuilder& table = builder.AddTable("T", {{.name = "Id"}});
    const jet::RowId first = table.AddRow({1});
    const jet::RowId second = table.AddRow({2});
    const jet::RowId third = table.AddRow({3});
    table.Delete(second);
    const jet::RowId hidden = table.Move(third, {33});
    jet::DatabaseFile file = builder.Open();
    const jet::TableDefinition definition = file.ReadTableDefinition(table.page());
    jet::RowReader reader(file, definition);
    ASSERT_TRUE(reader.Load(third));
    EXPECT_EQ(reader.Value(0), Variant{33});
    ASSERT_TRUE(reader.Load(first));
    EXPECT_EQ(reader.Value(0), Variant{1});
    EXPECT_EQ(reader.id(), first);
    EXPECT_FALSE(reader.Load(second));
    EXPECT_FALSE(reader.Load(hidden)) << "reached by its home slot only";
    EXPECT_FALSE(reader.Load({.page = first.page, .slot = 99}));
    EXPECT_EQ(ErrorOf([&] { reader.Load({.page = 2, .slot = 0}); }), kDamaged);
}

}  // namespace

}  // namespace ledgix::test
