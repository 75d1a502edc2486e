#include "sample_database.h"

#include <string>

#include "database_builder.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using runtime::Null;

constexpr std::uint8_t kAutonumber = 0x04;

std::string Repeated(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

runtime::Binary Pattern(std::size_t size) {
    runtime::Binary bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(1 + i * 7 % 251));
    return bytes;
}

std::vector<ColumnSpec> ColumnsOfAllTypes(bool jet4) {
    std::vector<ColumnSpec> columns{{.name = "Number", .more_flags = kAutonumber},
                                    {.name = "Flag", .type = kBoolean},
                                    {.name = "Tiny", .type = kByte},
                                    {.name = "Small", .type = kInt16},
                                    {.name = "Price", .type = kCurrency},
                                    {.name = "Rate", .type = kSingle},
                                    {.name = "Exact", .type = kDouble},
                                    {.name = "Born", .type = kDate},
                                    {.name = "Code", .type = kBinary, .characters = 20},
                                    {.name = "Title", .type = kText, .characters = 50, .compressed = jet4},
                                    {.name = "Key", .type = kGuid},
                                    {.name = "Loose", .type = kInt32, .stored_variable = true},
                                    {.name = "LooseDate", .type = kDate, .stored_variable = true}};
    if (jet4)
        columns.push_back({.name = "Ratio", .type = kNumeric, .precision = 18, .scale = 4});
    return columns;
}

Values LowValues() {
    return {-7,
            false,
            std::uint8_t{0},
            std::int16_t{-32768},
            runtime::Currency{-12345},
            -1.5F,
            -0.1,
            runtime::Date{-1.25},
            runtime::Binary{1, 2, 3},
            "",
            runtime::Guid{},
            -1,
            runtime::Date{36526.5},
            runtime::Decimal{.negative = true, .scale = 4, .magnitude = {0, 0, 0, 123456}}};
}

Values HighValues() {
    const runtime::Guid guid{{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 1, 2, 3, 4, 5, 6, 7, 8}};
    return {2147483647,
            true,
            std::uint8_t{255},
            std::int16_t{32767},
            runtime::Currency{922337203685477},
            3.25e10F,
            444.555,
            runtime::Date{45000.75},
            Pattern(20),
            "Caf\u00E9 \u20AC",
            guid,
            5,
            Null{},
            runtime::Decimal{.negative = false, .scale = 4, .magnitude = {0, 0, 7, 1}}};
}

void AddAllTypes(DatabaseBuilder& builder) {
    const bool jet4 = builder.file().format().generation == jet::Generation::kJet4;
    const std::vector<ColumnSpec> columns = ColumnsOfAllTypes(jet4);
    TableBuilder& table = builder.AddTable("All types", columns);
    Values nulls(columns.size());
    nulls[0] = 3;
    nulls[1] = true;
    for (Values values : {LowValues(), HighValues(), nulls}) {
        values.resize(columns.size());
        table.AddRow(values);
    }
}

void AddLongValues(DatabaseBuilder& builder) {
    TableBuilder& table = builder.AddTable(
        "Long values",
        {{.name = "Id"}, {.name = "Remarks", .type = kMemo, .compressed = true}, {.name = "Picture", .type = kOle}});
    table.AddRow({1, "inside", Pattern(10)});
    table.AddRow({2, Repeated("one row \u00E4 ", 30), Pattern(500)});
    table.AddRow({3, Repeated("a chain of rows \u03C0 ", 400), Pattern(9000)});
    table.AddRow({4, Null{}, Null{}});
    table.KeepLongValues(LongValuePlace::kChain);
    table.AddRow({5, "a chain of one", Pattern(3)});
}

void AddMovedAndDeleted(DatabaseBuilder& builder) {
    TableBuilder& table =
        builder.AddTable("Moved", {{.name = "Id"}, {.name = "Text", .type = kText, .characters = 200}});
    std::vector<jet::RowId> rows;
    for (int i = 0; i < 8; ++i)
        rows.push_back(table.AddRow({i, "row " + std::to_string(i)}));
    table.Delete(rows[1]);
    table.Delete(rows[4], true);
    table.Move(rows[2], {2, Repeated("moved ", 20)});
    table.Move(rows[7], {7, "moved too"});
}

void AddChangedColumns(DatabaseBuilder& builder) {
    TableBuilder& table = builder.AddTable("Changed", {{.name = "Id"},
                                                       {.name = "Dropped", .type = kText, .characters = 20},
                                                       {.name = "DroppedNumber", .type = kDouble},
                                                       {.name = "Kept", .type = kText, .characters = 20}});
    table.AddRow({1, "gone", 1.5, "old row"});
    table.DropColumn("Dropped");
    table.DropColumn("DroppedNumber");
    table.AddColumn({.name = "Added", .type = kText, .characters = 20});
    table.AddColumn({.name = "AddedFlag", .type = kBoolean});
    table.AddColumn({.name = "AddedNumber", .type = kCurrency});
    table.AddRow({2, "new row", "added", true, runtime::Currency{50000}});
    table.AddEncodedRow(table.Encode({3, "with a gap", Null{}, false, Null{}}, 5));
}

// 29 columns as a household keeps them, and rows of every length around the multiples of 256.
void AddLengths(DatabaseBuilder& builder) {
    std::vector<ColumnSpec> columns{{.name = "Id"}};
    for (int i = 0; i < 26; ++i)
        columns.push_back({.name = "Amount" + std::to_string(i), .type = kDouble});
    columns.push_back({.name = "First", .type = kText, .characters = 250});
    columns.push_back({.name = "Second", .type = kText, .characters = 250});
    TableBuilder& table = builder.AddTable("Lengths", columns);
    for (int i = 0; i < 60; ++i) {
        Values values{i};
        for (int k = 0; k < 26; ++k)
            values.push_back(k + i / 4.0);
        values.push_back(Repeated("x", 12 + i * 4));
        values.push_back(i % 3 == 0 ? runtime::Variant{Null{}} : runtime::Variant{Repeated("y", i)});
        table.AddRow(values);
    }
}

void AddManyColumns(DatabaseBuilder& builder) {
    std::vector<ColumnSpec> columns;
    Values values;
    for (int i = 0; i < 120; ++i) {
        columns.push_back(
            {.name = "A column with a rather long name, number " + std::to_string(i), .type = kText, .characters = 10});
        values.push_back(i % 2 == 0 ? runtime::Variant{std::to_string(i)} : runtime::Variant{Null{}});
    }
    builder.AddTable("Many columns", columns).AddRow(values);
}

void AddIndexed(DatabaseBuilder& builder) {
    TableBuilder& table = builder.AddTable("Indexed", {{.name = "Id"}, {.name = "Rank"}});
    table.AddIndex({.name = "PrimaryKey", .column = "Id", .primary = true, .entries_per_page = 4});
    table.AddIndex({.name = "Rank", .column = "Rank", .entries_per_page = 4, .ascending = false, .compressed = true});
    for (int i = 0; i < 60; ++i)
        table.AddRow({i * 37 % 60 * 3 - 40, i});
}

void AddFlagsOnly(DatabaseBuilder& builder) {
    TableBuilder& table = builder.AddTable(
        "Flags only",
        {{.name = "A", .type = kBoolean}, {.name = "B", .type = kBoolean}, {.name = "Id", .type = kInt16}});
    table.AddRow({true, false, std::int16_t{1}});
    table.AddRow({false, true, Null{}});
}

}  // namespace

std::vector<std::uint8_t> BuildSampleDatabase(jet::Generation generation) {
    DatabaseBuilder builder(generation);
    AddAllTypes(builder);
    AddLongValues(builder);
    AddMovedAndDeleted(builder);
    AddChangedColumns(builder);
    AddLengths(builder);
    AddManyColumns(builder);
    AddIndexed(builder);
    AddFlagsOnly(builder);
    builder.AddTable("Empty", {{.name = "Id"}});
    builder.AddEntry(0x7000001, jet::kTablesContainer, "Linked", jet::kLinkedTableEntry, 0, "C:\\other.mdb", "Source");
    return builder.Finish();
}

std::vector<std::uint8_t> BuildSmallDatabase(jet::Generation generation) {
    DatabaseBuilder builder(generation);
    AddAllTypes(builder);
    AddMovedAndDeleted(builder);
    TableBuilder& table = builder.AddTable("Notes", {{.name = "Id"}, {.name = "Remarks", .type = kMemo}});
    table.AddIndex({.name = "PrimaryKey", .column = "Id", .primary = true, .entries_per_page = 2});
    table.AddRow({1, "inside"});
    table.AddRow({2, Repeated("one row ", 20)});
    table.KeepLongValues(LongValuePlace::kChain);
    table.AddRow({3, Repeated("a chain of rows ", 150)});
    return builder.Finish();
}

}  // namespace ledgix::test
