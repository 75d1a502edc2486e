#include "table_writer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <memory>

#include <set>

#include "definition_reader.h"
#include "definition_writer.h"
#include "table_rows.h"
#include "table_scan.h"
#include "usage_map.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using jet::RowId;
using runtime::Null;

constexpr int kDuplicate = 3022;
constexpr int kNullInKey = 3058;
constexpr int kRecordTooLarge = 3047;
constexpr int kFieldTooSmall = 3163;
constexpr int kConversion = 3421;
constexpr int kNotAvailable = 3251;

class TableWriter : public WrittenDatabase {
protected:
    // A number and a text, and rows that fill a page but for a few bytes. A row takes room for `size` characters.
    std::vector<RowId> FillPage(std::size_t size) {
        MakeTable({{.name = "Id"}, {.name = "Text", .type = kBinary, .size = 255}});
        AddPrimaryKey("Id");
        std::vector<RowId> rows;
        for (int i = 0;; ++i) {
            const RowId row = Insert({i, Filler(size)});
            if (!rows.empty() && row.page != rows.front().page) {
                Delete(row);
                return rows;
            }
            rows.push_back(row);
        }
    }
    static runtime::Binary Filler(std::size_t size) { return runtime::Binary(size, static_cast<std::uint8_t>(size)); }
    void Grow(RowId row, std::size_t size) { Update(row, {{.column = 1, .value = Filler(size)}}); }

    std::vector<RowValues> ByIndex(const std::string& index) { return RowsByIndex(file(), Table(), index); }

    // What one column of a list of rows holds.
    static RowValues Column(const std::vector<RowValues>& rows, std::size_t column) {
        RowValues values;
        for (const RowValues& row : rows)
            values.push_back(row[column]);
        return values;
    }
};

TEST_P(TableWriter, InsertsRowsAsJetDoes) {
    MakeTable({{.name = "Id"},
               {.name = "Nick", .type = kText, .size = 20},
               {.name = "Tame", .type = kBoolean},
               {.name = "Born", .type = kDate}});
    AddPrimaryKey("Id");
    const std::vector<RowValues> rows{{1, "Rex", true, runtime::Date{36526.5}}, {-2, "Al", false, Null{}}};
    EXPECT_EQ(Insert(rows[0]).slot, 0);
    EXPECT_EQ(Insert(rows[1]).slot, 1);
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Table().row_count, 2U);
    EXPECT_EQ(IndexOf("PrimaryKey").distinct_keys, 2U);
    EXPECT_EQ(Column(ByIndex("PrimaryKey"), 0), (RowValues{-2, 1}));
}

TEST_P(TableWriter, KeepsValuesOfAllTypes) {
    std::vector<jet::NewColumn> columns{{.name = "Boolean", .type = kBoolean},
                                        {.name = "Byte", .type = kByte},
                                        {.name = "Int16", .type = kInt16},
                                        {.name = "Int32", .type = kInt32},
                                        {.name = "Currency", .type = kCurrency},
                                        {.name = "Single", .type = kSingle},
                                        {.name = "Double", .type = kDouble},
                                        {.name = "Date", .type = kDate},
                                        {.name = "Binary", .type = kBinary, .size = 10},
                                        {.name = "Text", .type = kText, .size = 10},
                                        {.name = "Ole", .type = kOle},
                                        {.name = "Memo", .type = kMemo},
                                        {.name = "Guid", .type = kGuid}};
    RowValues values{true,
                     std::uint8_t{200},
                     std::int16_t{-32768},
                     std::numeric_limits<std::int32_t>::min(),
                     runtime::Currency{std::numeric_limits<std::int64_t>::min()},
                     -1.5F,
                     444.555,
                     runtime::Date{-1.25},
                     runtime::Binary{0, 1, 2},
                     "\u00E4'\u20AC-",
                     runtime::Binary(3000, 9),
                     std::string(7000, 'm'),
                     runtime::Guid{{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 1, 2, 3, 4, 5, 6, 7, 8}}};
    if (IsJet4()) {
        columns.push_back({.name = "Numeric", .type = kNumeric, .precision = 18, .scale = 4});
        values.emplace_back(runtime::Decimal{.negative = true, .scale = 4, .magnitude = {0, 0, 7, 9}});
    }
    MakeTable(columns);
    RowValues nulls(values.size());
    const RowId row = Insert(values);
    const RowId empty = Insert(nulls);
    nulls[0] = false;
    EXPECT_EQ(Row(row), values);
    EXPECT_EQ(Row(empty), nulls);
    for (std::size_t i = 0; i < values.size(); ++i) {
        Update(empty, {{.column = i, .value = values[i]}});
        Update(row, {{.column = i, .value = Null{}}});
    }
    EXPECT_EQ(Row(empty), values);
    EXPECT_EQ(Row(row), nulls);
}

TEST_P(TableWriter, IndexesValuesOfAllTypes) {
    MakeTable({{.name = "Boolean", .type = kBoolean},
               {.name = "Byte", .type = kByte},
               {.name = "Int16", .type = kInt16},
               {.name = "Currency", .type = kCurrency},
               {.name = "Single", .type = kSingle},
               {.name = "Double", .type = kDouble},
               {.name = "Date", .type = kDate},
               {.name = "Binary", .type = kBinary, .size = 10},
               {.name = "Text", .type = kText, .size = 10},
               {.name = "Guid", .type = kGuid}});
    for (const jet::Column& column : Table().columns) {
        AddIndex({.name = column.name, .parts = {{.column = column.name}}});
        AddIndex({.name = column.name + " down", .parts = {{.column = column.name, .ascending = false}}});
    }
    const RowId low = Insert({true, std::uint8_t{0}, std::int16_t{-5}, runtime::Currency{-1}, -2.0F, -3.0,
                              runtime::Date{-7}, runtime::Binary{1}, "a", runtime::Guid{}});
    const RowId high = Insert({false, std::uint8_t{200}, std::int16_t{5}, runtime::Currency{1}, 2.0F, 3.0,
                               runtime::Date{7}, runtime::Binary{2, 1}, "B", runtime::Guid{{9}}});
    for (const jet::Column& column : Table().columns) {
        EXPECT_EQ(ByIndex(column.name), (std::vector<RowValues>{Row(low), Row(high)})) << column.name;
        EXPECT_EQ(ByIndex(column.name + " down"), (std::vector<RowValues>{Row(high), Row(low)})) << column.name;
    }
    const RowId nulls = Insert(RowValues(10));
    EXPECT_EQ(ByIndex("Int16").front(), Row(nulls));
    EXPECT_EQ(ByIndex("Int16 down").back(), Row(nulls));
    EXPECT_EQ(Faults(file()), "");
    Delete(low);
    Delete(nulls);
}

// Null in a boolean is false, in an index too.
TEST_P(TableWriter, TakesNullForABooleanAsFalseInKeys) {
    MakeTable({{.name = "Flag", .type = kBoolean}, {.name = "Id"}});
    AddIndex({.name = "Flag", .parts = {{.column = "Flag"}}, .required = true, .ignore_nulls = true});
    const RowId row = Insert({Null{}, 1});
    EXPECT_EQ(ByIndex("Flag").size(), 1U);
    EXPECT_EQ(Faults(file()), "");
    Update(row, {{.column = 0, .value = true}});
    Update(row, {{.column = 0, .value = Null{}}});
    Delete(row);
    EXPECT_TRUE(ByIndex("Flag").empty());
}

TEST_P(TableWriter, UpdatesARowWhereItIs) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[3], 10);
    Grow(rows[5], 80);
    EXPECT_TRUE(Moves(rows[3]).empty());
    EXPECT_TRUE(Moves(rows[5]).empty());
    EXPECT_EQ(Row(rows[3]), (RowValues{3, Filler(10)}));
    EXPECT_EQ(Row(rows[4]), (RowValues{4, Filler(50)}));
    EXPECT_EQ(Row(rows[5]), (RowValues{5, Filler(80)}));
    EXPECT_EQ(Rows().size(), rows.size());
    EXPECT_EQ(Table().row_count, rows.size());
}

TEST_P(TableWriter, LeavesUnnamedColumnsAsTheyAre) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 20}, {.name = "Flag", .type = kBoolean}});
    const RowId row = Insert({1, "text", true});
    Update(row, {});
    EXPECT_EQ(Row(row), (RowValues{1, "text", true}));
    Update(row, {{.column = 0, .value = 2}});
    EXPECT_EQ(Row(row), (RowValues{2, "text", true}));
    Update(row, {{.column = 1, .value = Null{}}, {.column = 2, .value = false}});
    EXPECT_EQ(Row(row), (RowValues{2, Null{}, false}));
}

TEST_P(TableWriter, MovesARowThatOutgrowsItsPage) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[1], 250);
    const auto moves = Moves(rows[1]);
    ASSERT_EQ(moves.size(), 1U);
    EXPECT_NE(moves[0].page, rows[1].page);
    EXPECT_EQ(Row(rows[1]), (RowValues{1, Filler(250)}));
    EXPECT_EQ(Rows().size(), rows.size());
    EXPECT_EQ(ByIndex("PrimaryKey")[1], Row(rows[1]));
    Update(rows[1], {{.column = 0, .value = 10000}});
    EXPECT_EQ(ByIndex("PrimaryKey").back(), Row(rows[1]));
}

TEST_P(TableWriter, ChangesAMovedRowWhereItWent) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[1], 150);
    const auto moves = Moves(rows[1]);
    Grow(rows[1], 160);
    EXPECT_EQ(Moves(rows[1]), moves);
    EXPECT_EQ(Row(rows[1]), (RowValues{1, Filler(160)}));
}

TEST_P(TableWriter, BringsAMovedRowHomeWhenItFits) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[1], 250);
    ASSERT_EQ(Moves(rows[1]).size(), 1U);
    Delete(rows[2]);
    Delete(rows[3]);
    Delete(rows[4]);
    Delete(rows[5]);
    Grow(rows[1], 100);
    EXPECT_TRUE(Moves(rows[1]).empty());
    EXPECT_EQ(Row(rows[1]), (RowValues{1, Filler(100)}));
    EXPECT_EQ(jet::ReadUsageMap(pager(), Table().owned_map), std::vector<jet::PageNumber>{rows[1].page})
        << "the other page went back";
}

TEST_P(TableWriter, MovesAMovedRowAgain) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[1], 150);
    const auto moves = Moves(rows[1]);
    ASSERT_EQ(moves.size(), 1U);
    int number = 1000;
    while (Insert({number++, Filler(50)}).page == moves[0].page) {
    }
    Grow(rows[1], 255);
    ASSERT_EQ(Moves(rows[1]).size(), 1U);
    EXPECT_NE(Moves(rows[1])[0].page, moves[0].page);
    EXPECT_NE(Moves(rows[1])[0].page, rows[1].page);
    EXPECT_EQ(Row(rows[1]), (RowValues{1, Filler(255)}));
}

TEST_P(TableWriter, DeletesRows) {
    const std::vector<RowId> rows = FillPage(50);
    Grow(rows[1], 250);
    const auto moves = Moves(rows[1]);
    Delete(rows[1]);
    Delete(rows[0]);
    EXPECT_EQ(Row(rows[0]), RowValues());
    EXPECT_EQ(Row(rows[1]), RowValues());
    EXPECT_EQ(Rows().size(), rows.size() - 2);
    EXPECT_EQ(Table().row_count, rows.size() - 2);
    EXPECT_EQ(ByIndex("PrimaryKey").size(), rows.size() - 2);
    EXPECT_EQ(jet::ReadUsageMap(pager(), Table().owned_map), std::vector<jet::PageNumber>{rows[0].page});
    EXPECT_EQ(ErrorChanging([&] { jet::TableWriter(file(), Table()).Delete(rows[0]); }), kDamaged);
    EXPECT_EQ(ErrorUpdating(rows[1], {}), kDamaged);
    for (std::size_t i = 2; i < rows.size(); ++i)
        Delete(rows[i]);
    EXPECT_TRUE(jet::ReadUsageMap(pager(), Table().owned_map).empty());
    EXPECT_EQ(Table().row_count, 0U);
}

TEST_P(TableWriter, ReusesTheRoomOfDeletedRows) {
    const std::vector<RowId> rows = FillPage(100);
    Delete(rows[0]);
    Delete(rows[1]);
    const RowId row = Insert({1000, Filler(120)});
    EXPECT_EQ(row.page, rows[0].page);
    EXPECT_EQ(row.slot, rows.size()) << "slots are not used again";
}

TEST_P(TableWriter, NumbersRowsByItself) {
    MakeTable({{.name = "Id", .autonumber = true}, {.name = "A"}});
    AddPrimaryKey("Id");
    const auto id = [&](RowId row) { return std::get<std::int32_t>(Row(row)[0]); };
    EXPECT_EQ(id(Insert({Null{}, 1})), 1);
    EXPECT_EQ(id(Insert({Null{}, 1})), 2);
    EXPECT_EQ(id(Insert({10, 1})), 10);
    EXPECT_EQ(id(Insert({5, 1})), 5);
    const RowId last = Insert({Null{}, 1});
    EXPECT_EQ(id(last), 11);
    EXPECT_EQ(Table().last_autonumber, 11U);
    Delete(last);
    EXPECT_EQ(id(Insert({Null{}, 1})), 12) << "numbers do not come again";
    EXPECT_EQ(ErrorInserting({10, 1}), kDuplicate);
    EXPECT_EQ(id(Insert({-3, 1})), -3);
    EXPECT_EQ(id(Insert({Null{}, 1})), 13);
}

TEST_P(TableWriter, DrawsGuidsByItself) {
    MakeTable({{.name = "Id", .type = kGuid, .autonumber = true}, {.name = "A"}});
    AddPrimaryKey("Id");
    std::set<std::array<std::uint8_t, 16>> seen;
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(seen.insert(std::get<runtime::Guid>(Row(Insert({Null{}, 1}))[0]).bytes).second);
    const runtime::Guid given{{1, 2, 3}};
    EXPECT_EQ(Row(Insert({given, 1}))[0], runtime::Variant(given));
}

TEST_P(TableWriter, RefusesKeysThatAUniqueIndexHas) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 20}});
    AddPrimaryKey("Id");
    AddIndex({.name = "Text", .parts = {{.column = "Text"}}, .unique = true});
    const RowId first = Insert({1, "Stra\u00DFe"});
    const RowId second = Insert({2, Null{}});
    Insert({3, Null{}});
    const std::vector<RowValues> before = Rows();
    EXPECT_EQ(ErrorInserting({1, "other"}), kDuplicate);
    EXPECT_EQ(ErrorInserting({4, "STRA\u00DFE"}), kDuplicate) << "case does not matter";
    EXPECT_EQ(ErrorInserting({4, "Stra\u00DFe   "}), kDuplicate) << "blanks at the end do not matter";
    EXPECT_EQ(ErrorUpdating(second, {{.column = 0, .value = 1}}), kDuplicate);
    EXPECT_EQ(ErrorUpdating(second, {{.column = 1, .value = "stra\u00DFe"}}), kDuplicate);
    EXPECT_EQ(Rows(), before);
    Update(first, {{.column = 1, .value = "STRASSE"}});
    Update(first, {{.column = 0, .value = 1}, {.column = 1, .value = "strasse"}});
    EXPECT_EQ(Row(first), (RowValues{1, "strasse"}));
}

TEST_P(TableWriter, RefusesNullInAKeyThatMayNotBe) {
    MakeTable({{.name = "Id"}, {.name = "A"}, {.name = "B"}});
    AddPrimaryKey("Id");
    AddIndex({.name = "AB", .parts = {{.column = "A"}, {.column = "B"}}, .required = true});
    const RowId row = Insert({1, 1, 1});
    EXPECT_EQ(ErrorInserting({Null{}, 1, 1}), kNullInKey);
    EXPECT_EQ(ErrorInserting({2, 1, Null{}}), kNullInKey);
    EXPECT_EQ(ErrorUpdating(row, {{.column = 0, .value = Null{}}}), kNullInKey);
    EXPECT_EQ(ErrorUpdating(row, {{.column = 1, .value = Null{}}}), kNullInKey);
    EXPECT_EQ(Rows(), (std::vector<RowValues>{{1, 1, 1}}));
}

TEST_P(TableWriter, LeavesRowsOfNullsOutOfIndexesThatIgnoreThem) {
    MakeTable({{.name = "A"}, {.name = "B"}});
    AddIndex({.name = "A", .parts = {{.column = "A"}}, .ignore_nulls = true});
    AddIndex({.name = "AB", .parts = {{.column = "A"}, {.column = "B", .ascending = false}}, .ignore_nulls = true});
    const RowId nulls = Insert({Null{}, Null{}});
    const RowId half = Insert({Null{}, 1});
    EXPECT_TRUE(ByIndex("A").empty());
    EXPECT_EQ(ByIndex("AB"), (std::vector<RowValues>{{Null{}, 1}}));
    Update(nulls, {{.column = 0, .value = 7}});
    Update(half, {{.column = 1, .value = Null{}}});
    EXPECT_EQ(ByIndex("A").size(), 1U);
    EXPECT_EQ(ByIndex("AB"), (std::vector<RowValues>{{7, Null{}}}));
    EXPECT_EQ(Faults(file()), "");
    Delete(nulls);
    Delete(half);
}

TEST_P(TableWriter, OrdersSeveralColumnsEachInItsDirection) {
    MakeTable({{.name = "A"}, {.name = "B", .type = kText, .size = 10}, {.name = "C"}});
    AddIndex({.name = "ABC",
              .parts = {{.column = "A", .ascending = false}, {.column = "B"}, {.column = "C", .ascending = false}}});
    for (const RowValues& row :
         std::vector<RowValues>{{1, "b", 1}, {2, "a", 1}, {1, "a", 1}, {1, "a", 2}, {2, Null{}, 1}})
        Insert(row);
    EXPECT_EQ(ByIndex("ABC"),
              (std::vector<RowValues>{{2, Null{}, 1}, {2, "a", 1}, {1, "a", 2}, {1, "a", 1}, {1, "b", 1}}));
}

TEST_P(TableWriter, RefusesRowsThatAreTooLong) {
    std::vector<jet::NewColumn> columns;
    for (int i = 0; i < 20; ++i)
        columns.push_back({.name = "C" + std::to_string(i), .type = kBinary, .size = 255});
    MakeTable(columns);
    RowValues values(20);
    const RowId row = Insert(values);
    values.assign(20, Filler(250));
    EXPECT_EQ(ErrorInserting(values), kRecordTooLarge);
    std::vector<jet::TableWriter::Assignment> all;
    for (std::size_t i = 0; i < 20; ++i)
        all.push_back({.column = i, .value = Filler(250)});
    EXPECT_EQ(ErrorUpdating(row, all), kRecordTooLarge);
    EXPECT_EQ(Rows(), std::vector<RowValues>{RowValues(20)});
}

TEST_P(TableWriter, RefusesValuesThatTheColumnDoesNotTake) {
    MakeTable(
        {{.name = "Id"}, {.name = "Text", .type = kText, .size = 5}, {.name = "Data", .type = kBinary, .size = 3}});
    const RowId row = Insert({1, "12345", Filler(3)});
    EXPECT_EQ(ErrorInserting({2, "123456", Null{}}), kFieldTooSmall);
    EXPECT_EQ(ErrorInserting({2, Null{}, Filler(4)}), kFieldTooSmall);
    EXPECT_EQ(ErrorInserting({2.0, Null{}, Null{}}), kConversion);
    EXPECT_EQ(ErrorInserting({2, 7, Null{}}), kConversion);
    EXPECT_EQ(ErrorUpdating(row, {{.column = 1, .value = "123456"}}), kFieldTooSmall);
    EXPECT_EQ(Rows(), (std::vector<RowValues>{{1, "12345", Filler(3)}}));
}

TEST_P(TableWriter, ChangesNothingWhenTextCannotBeIndexed) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 20}, {.name = "Memo", .type = kMemo}});
    AddPrimaryKey("Id");
    AddIndex({.name = "Text", .parts = {{.column = "Text"}}});
    const RowId row = Insert({1, "text", std::string(500, 'a')});
    const auto before = ContentOf(file());
    EXPECT_EQ(ErrorInserting({2, "\u4E2D", std::string(5000, 'a')}), kNotAvailable);
    EXPECT_EQ(ErrorUpdating(row, {{.column = 2, .value = Null{}}, {.column = 1, .value = "\u4E2D"}}), kNotAvailable);
    EXPECT_EQ(ContentOf(file()), before);
    EXPECT_EQ(Rows().size(), 1U);
}

TEST_P(TableWriter, ReadsAndChangesRowsWrittenBeforeAColumnWasAdded) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 20}});
    const RowId row = Insert({1, "old"});
    const RowId other = Insert({2, Null{}});
    AddColumn({.name = "Number"});
    AddColumn({.name = "Flag", .type = kBoolean});
    AddColumn({.name = "Memo", .type = kMemo});
    EXPECT_EQ(Row(row), (RowValues{1, "old", Null{}, false, Null{}}));
    Update(row, {{.column = 2, .value = 5}});
    EXPECT_EQ(Row(row), (RowValues{1, "old", 5, false, Null{}}));
    Update(other, {{.column = 4, .value = std::string(3000, 'x')}});
    EXPECT_EQ(Row(other), (RowValues{2, Null{}, Null{}, false, std::string(3000, 'x')}));
    Delete(row);
}

// An index of a relation has no tree of its own when there is an index of the same columns already.
TEST_P(TableWriter, EntersARowOnceInATreeThatTwoIndexesShare) {
    MakeTable({{.name = "Id"}, {.name = "A"}});
    AddIndex({.name = "First", .parts = {{.column = "A"}}});
    Change([&] {
        jet::TableDefinition table = Table();
        jet::Index second = table.indexes[0];
        second.name = "Second";
        second.logical_number = 1;
        table.indexes.push_back(second);
        const auto stored = jet::ReadStoredDefinition(pager(), table.page);
        const auto content =
            jet::CutDefinition(format(), jet::EncodeDefinition(format(), table), {stored.pages[0]}).front();
        std::copy(content.begin(), content.end(), pager().Overwrite(table.page).begin());
    });
    ASSERT_EQ(Table().indexes.size(), 2U);
    const RowId row = Insert({1, 5});
    Insert({2, 6});
    Update(row, {{.column = 1, .value = 7}});
    EXPECT_EQ(Column(ByIndex("First"), 1), (RowValues{6, 7}));
    EXPECT_EQ(Column(ByIndex("Second"), 1), (RowValues{6, 7}));
    EXPECT_EQ(Faults(file()), "");
    Delete(row);
    EXPECT_EQ(ByIndex("Second").size(), 1U);
}

TEST_P(TableWriter, KeepsItsPlaceWhileTransactionsNest) {
    MakeTable({{.name = "Id"}});
    AddPrimaryKey("Id");
    Change([&] {
        jet::TableWriter writer(file(), Table());
        writer.Insert({1});
        EXPECT_EQ(ErrorInserting({1}), kDuplicate);
        {
            jet::Transaction given_up(file());
            jet::TableWriter(file(), Table()).Insert({2});
        }
        writer.Insert({3});
    });
    EXPECT_EQ(Rows(), (std::vector<RowValues>{{1}, {3}}));
}

TEST_P(TableWriter, ChangesTheCatalogueLikeAnyTable) {
    const jet::TableDefinition objects = Table("MSysObjects");
    RowId row;
    Change([&] {
        RowValues values(objects.columns.size());
        values[objects.FindColumn("Id").value()] = 12345;
        values[objects.FindColumn("ParentId").value()] = 0x0F000003;
        values[objects.FindColumn("Name").value()] = "A relation";
        values[objects.FindColumn("Type").value()] = std::int16_t{8};
        row = jet::TableWriter(file(), objects).Insert(values);
    });
    Change([&] { jet::TableWriter(file(), objects).Delete(row); });
    EXPECT_EQ(ReadRows(file(), objects).size(), 8U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, TableWriter, kBothGenerations, GenerationName);

// The tables of files that other software made.
class TableOfOthers : public testing::TestWithParam<std::string> {
protected:
    TableOfOthers() {
        jet::DatabaseFile source(jet::OpenPageFile(GetParam()));
        file_ = std::make_unique<jet::DatabaseFile>(jet::MakeMemoryFile(ContentOf(source)));
    }

    jet::DatabaseFile& file() { return *file_; }
    std::string FaultsNow() { return Faults(file(), jet::Strictness::kAnyWriter); }

    std::vector<jet::TableDefinition> UserTables() {
        std::vector<jet::TableDefinition> tables;
        for (const jet::CatalogEntry& entry : file().ReadCatalog()) {
            if (entry.IsUserTable())
                tables.push_back(file().ReadTableDefinition(entry.DefinitionPage()));
        }
        return tables;
    }

    // The rows whose values this engine can put into an index.
    std::map<std::size_t, RowValues> RowsToChange(const jet::TableDefinition& table) {
        std::map<std::size_t, RowValues> rows;
        ids_.clear();
        for (jet::TableScan scan(file(), table); scan.Next(); ids_.push_back(scan.id())) {
            RowValues values;
            for (std::size_t i = 0; i < table.columns.size(); ++i)
                values.push_back(scan.Value(i));
            jet::Transaction given_up(file());
            if (ErrorOf([&] { jet::TableWriter(file(), table).Update(scan.id(), All(values)); }) == 0)
                rows.emplace(ids_.size(), values);
        }
        return rows;
    }
    static std::vector<jet::TableWriter::Assignment> All(const RowValues& values) {
        std::vector<jet::TableWriter::Assignment> all;
        for (std::size_t i = 0; i < values.size(); ++i)
            all.push_back({.column = i, .value = values[i]});
        return all;
    }

    // The longest text of the row's own that each text column takes.
    static RowValues Grown(const jet::TableDefinition& table, RowValues values, std::size_t number) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (table.columns[i].type != kText)
                continue;
            std::string text = std::to_string(1000 + number);
            text.resize(table.columns[i].Characters(), 'q');
            values[i] = text;
        }
        return values;
    }

    std::unique_ptr<jet::DatabaseFile> file_;
    std::vector<RowId> ids_;
};

TEST_P(TableOfOthers, IsTheSameWhenItsRowsAreWrittenAnew) {
    const std::string faults = FaultsNow();
    for (const jet::TableDefinition& table : UserTables()) {
        const auto before = ReadRows(file(), table);
        RowsToChange(table);
        jet::Transaction change(file());
        jet::TableWriter writer(file(), table);
        for (const RowId row : ids_)
            writer.Update(row, {});
        change.Commit();
        EXPECT_EQ(ReadRows(file(), table), before);
    }
    EXPECT_EQ(FaultsNow(), faults);
}

TEST_P(TableOfOthers, IsTheSameWhenItsRowsGrowAndShrink) {
    const std::string faults = FaultsNow();
    for (const jet::TableDefinition& table : UserTables()) {
        const auto before = ReadRows(file(), table);
        const auto rows = RowsToChange(table);
        const auto update = [&](std::size_t number, const RowValues& values) {
            return ErrorOfChange(file(), [&] { jet::TableWriter(file(), table).Update(ids_[number], All(values)); });
        };
        for (const auto& [number, values] : rows)
            update(number, Grown(table, values, number));
        EXPECT_EQ(FaultsNow(), faults);
        for (const auto& [number, values] : rows)
            EXPECT_EQ(update(number, values), 0);
        EXPECT_EQ(ReadRows(file(), table), before);
        EXPECT_EQ(FaultsNow(), faults);
    }
}

TEST_P(TableOfOthers, StaysSoundWhenItsRowsAreDeletedAndComeAgain) {
    const std::string faults = FaultsNow();
    for (const jet::TableDefinition& table : UserTables()) {
        const auto rows = RowsToChange(table);
        jet::Transaction change(file());
        jet::TableWriter writer(file(), table);
        for (const auto& [number, values] : rows)
            writer.Delete(ids_[number]);
        EXPECT_EQ(ReadRows(file(), table).size(), ids_.size() - rows.size());
        for (const auto& [number, values] : rows)
            writer.Insert(values);
        EXPECT_EQ(ReadRows(file(), table).size(), ids_.size());
        change.Commit();
        EXPECT_EQ(FaultsNow(), faults);
    }
}

INSTANTIATE_TEST_SUITE_P(SampleFiles, TableOfOthers, testing::ValuesIn(SampleFiles()), FileTestName);

}  // namespace

}  // namespace ledgix::test
