#include "schema_writer.h"

#include <map>
#include <set>

#include "definition_parts.h"
#include "definition_reader.h"
#include "hex.h"
#include "mdbtools_judge.h"
#include "pet_table.h"
#include "table_rows.h"
#include "temporary_folder.h"
#include "usage_map.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using enum jet::ColumnType;
using jet::PageNumber;
using jet::RowId;
using runtime::Binary;
using runtime::Null;

constexpr int kTableExists = 3010;
constexpr int kDuplicate = 3022;
constexpr int kRecordTooLarge = 3047;
constexpr int kNullInKey = 3058;
constexpr int kInvalidName = 3125;
constexpr int kTooManyFields = 3190;
constexpr int kDuplicateField = 3191;
constexpr int kInvalidFieldType = 3259;
constexpr int kItemNotFound = 3265;
constexpr int kInvalidIndex = 3277;
constexpr int kPrimaryKeyExists = 3283;
constexpr int kIndexExists = 3284;
constexpr int kTooManyIndexes = 3626;
constexpr std::int32_t kTables = 0x0F000001;

class SchemaWriter : public WrittenDatabase {
protected:
    void MakePets() {
        MakeTable({{.name = "Id"},
                   {.name = "Nick", .type = kText, .size = 20},
                   {.name = "Tame", .type = kBoolean},
                   {.name = "Born", .type = kDate}});
        AddPrimaryKey("Id");
    }

    int ErrorMaking(const std::string& name, const std::vector<jet::NewColumn>& columns = {{.name = "A"}}) {
        return ErrorChanging([&] { jet::CreateTable(file(), name, columns); });
    }
    int ErrorAddingColumn(const jet::NewColumn& column) {
        return ErrorChanging([&] { jet::AddColumn(file(), Table(), column); });
    }
    int ErrorAddingIndex(const jet::NewIndex& index) {
        return ErrorChanging([&] { jet::CreateIndex(file(), Table(), index); });
    }

    jet::StoredDefinition Stored() { return jet::ReadStoredDefinition(pager(), Table().page); }
    ByteList PageStart(PageNumber page, std::size_t size) {
        const auto& bytes = pager().Read(page)->bytes;
        return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
    }
    static std::string LongName(std::size_t number) {
        std::string name = std::to_string(number) + " ";
        name.resize(64, 'x');
        return name;
    }

    void ExpectSameAsMdbtools() {
        if (!HaveMdbtools())
            return;
        const TemporaryFolder folder;
        const auto content = ContentOf(file());
        const std::string path = folder.Write("t.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
        EXPECT_EQ(JudgeTables(path, false), std::vector<std::string>{"T"});
        EXPECT_TRUE(SameRows(JudgeRows(path, "T"), ReadRows(file(), "T")));
    }
};

TEST_P(SchemaWriter, WritesTheDefinitionThatJetWrites) {
    MakePets();
    Insert({1, "Rex", true, runtime::Date{36526.5}});
    Insert({-2, "Al", false, Null{}});
    const PageNumber first = IsJet4() ? 16 : 20;
    const jet::TableDefinition table = Table();
    EXPECT_EQ(table.page, first);
    EXPECT_EQ(table.owned_map, (RowId{first + 1, 0}));
    EXPECT_EQ(table.free_space_map, (RowId{first + 1, 1}));
    EXPECT_EQ(table.indexes.at(0).map, (RowId{first + 1, 2}));
    EXPECT_EQ(table.indexes.at(0).root, first + 2);
    const ByteList pet = Hex(IsJet4() ? kPetDefinitionJet4 : kPetDefinitionJet3);
    EXPECT_EQ(PageStart(first, pet.size()), pet);
    const ByteList rows = Hex(IsJet4() ? "01 01 BB 0F 10 00 00 00 00 00 00 00 02 00 E6 0F CD 0F"
                                       : "01 01 CB 07 14 00 00 00 02 00 EC 07 D9 07");
    EXPECT_EQ(PageStart(first + 3, rows.size()), rows);
    ByteList leaf = Hex(IsJet4() ? "04 01 0E 0E 10 00 00 00" : "04 01 F6 06 14 00 00 00");
    leaf.resize(IsJet4() ? 27 : 22);
    const ByteList mask = Hex("00 02 04");
    leaf.insert(leaf.end(), mask.begin(), mask.end());
    leaf.resize(IsJet4() ? 0x1E0 : 0xF8);
    const ByteList entries = Hex(IsJet4() ? "7F 7F FF FF FE 00 00 13 01 7F 80 00 00 01 00 00 13 00"
                                          : "7F 7F FF FF FE 00 00 17 01 7F 80 00 00 01 00 00 17 00");
    leaf.insert(leaf.end(), entries.begin(), entries.end());
    EXPECT_EQ(PageStart(first + 2, leaf.size()), leaf);
}

TEST_P(SchemaWriter, EntersTheTableIntoTheCatalogue) {
    MakePets();
    std::map<std::string, runtime::Variant> entry;
    for (const NamedRow& row : ReadRows(file(), "MSysObjects")) {
        const std::map<std::string, runtime::Variant> values(row.begin(), row.end());
        if (values.at("Name") == runtime::Variant("T"))
            entry = values;
    }
    ASSERT_FALSE(entry.empty());
    EXPECT_EQ(entry.at("DateCreate"), entry.at("DateUpdate"));
    EXPECT_GT(std::get<runtime::Date>(entry.at("DateCreate")).days, 45000);
    const std::map<std::string, runtime::Variant> given{{"Id", static_cast<std::int32_t>(Table().page)},
                                                        {"ParentId", kTables},
                                                        {"Name", "T"},
                                                        {"Type", std::int16_t{1}},
                                                        {"Flags", 0},
                                                        {"Owner", IsJet4() ? Binary{0x64, 0x8B} : Binary{0x03, 0x01}},
                                                        {"DateCreate", entry.at("DateCreate")},
                                                        {"DateUpdate", entry.at("DateUpdate")}};
    for (const auto& [name, value] : entry)
        EXPECT_EQ(value, given.contains(name) ? given.at(name) : runtime::Variant()) << name;
}

TEST_P(SchemaWriter, PassesTheRightsOfTheContainerOn) {
    MakePets();
    const Binary admin = IsJet4() ? Binary{0x64, 0x8B} : Binary{0x03, 0x01};
    const Binary users = IsJet4() ? Binary{0x65, 0x8B} : Binary{0x02, 0x01};
    const auto id = static_cast<std::int32_t>(Table().page);
    std::map<Binary, RowValues> rights;
    std::size_t count = 0;
    for (const NamedRow& row : ReadRows(file(), "MSysACEs")) {
        std::map<std::string, runtime::Variant> values(row.begin(), row.end());
        if (values.at("ObjectId") == runtime::Variant(id)) {
            rights[std::get<Binary>(values.at("SID"))] = {values.at("ACM"), values.at("FInheritable")};
            ++count;
        }
    }
    const std::map<Binary, RowValues> expected{{admin, {0xF00FE, false}}, {users, {0xFFEFF, false}}};
    EXPECT_EQ(rights, expected);
    EXPECT_EQ(count, 2U);
}

TEST_P(SchemaWriter, GivesLongValueColumnsTheirMaps) {
    MakeTable({{.name = "A", .type = kMemo}, {.name = "B", .type = kOle}});
    AddColumn({.name = "C", .type = kMemo});
    std::set<int> slots;
    for (const jet::Column& column : Table().columns) {
        for (const RowId map : {column.owned_map, column.free_space_map}) {
            EXPECT_EQ(map.page, Table().owned_map.page);
            EXPECT_TRUE(slots.insert(map.slot).second);
        }
    }
    Insert({std::string(3000, 'a'), Binary(3000, 1), std::string(3000, 'b')});
    EXPECT_EQ(Rows(), (std::vector<RowValues>{{std::string(3000, 'a'), Binary(3000, 1), std::string(3000, 'b')}}));
    ExpectSameAsMdbtools();
}

TEST_P(SchemaWriter, SpreadsADefinitionOverPagesAsItGrows) {
    MakeTable({{.name = LongName(0)}});
    std::size_t pages = 1;
    for (std::size_t i = 1; i < 90; ++i) {
        AddColumn({.name = LongName(i), .type = i % 2 == 0 ? kBoolean : kInt16});
        const auto stored = Stored();
        EXPECT_TRUE(stored.pages.size() == pages || stored.pages.size() == pages + 1);
        pages = stored.pages.size();
    }
    EXPECT_GE(pages, 3U);
    AddIndex({.name = LongName(1000), .parts = {{.column = LongName(1)}}});
    const jet::TableDefinition table = Table();
    ASSERT_EQ(table.columns.size(), 90U);
    for (std::size_t i = 0; i < 90; ++i) {
        EXPECT_EQ(table.columns[i].name, LongName(i));
        EXPECT_EQ(table.columns[i].number, i);
    }
    RowValues values(90);
    for (std::size_t i = 2; i < 90; i += 2)
        values[i] = i % 4 == 0;
    values[1] = std::int16_t{7};
    Insert(values);
    EXPECT_EQ(Rows(), std::vector<RowValues>{values});
    ExpectSameAsMdbtools();
}

TEST_P(SchemaWriter, MakesATableOfManyColumnsAtOnce) {
    std::vector<jet::NewColumn> columns;
    for (std::size_t i = 0; i < 255; ++i)
        columns.push_back({.name = LongName(i), .type = i % 3 == 0 ? kInt32 : kBoolean});
    MakeTable(columns);
    EXPECT_GE(Stored().pages.size(), 4U);
    EXPECT_EQ(Table().columns.size(), 255U);
    EXPECT_EQ(ErrorAddingColumn({.name = "One more"}), kTooManyFields);
    columns.push_back({.name = "One more"});
    EXPECT_EQ(ErrorMaking("U", columns), kTooManyFields);
}

TEST_P(SchemaWriter, GivesRowsThatAreThereTheirVariableSectionWithTheFirstVariableColumn) {
    MakeTable({{.name = "Id"}, {.name = "Number", .type = kDouble}, {.name = "Flag", .type = kBoolean}});
    AddPrimaryKey("Id");
    std::vector<RowValues> rows;
    for (int i = 0; i < 500; ++i)
        rows.push_back({i, 0.5 * i, i % 2 == 0});
    Change([&] {
        jet::TableWriter writer(file(), Table());
        for (const RowValues& row : rows)
            writer.Insert(row);
    });
    AddColumn({.name = "Another"});
    AddColumn({.name = "Text", .type = kText, .size = 10});
    for (RowValues& row : rows) {
        row.emplace_back(Null{});
        row.emplace_back(Null{});
    }
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Faults(file()), "");
    EXPECT_EQ(RowsByIndex(file(), Table(), "PrimaryKey"), rows);
    ExpectSameAsMdbtools();
}

TEST_P(SchemaWriter, LeavesRowsAloneWhenAColumnComes) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 10}});
    const RowId row = Insert({1, "a"});
    const auto page = pager().Read(row.page)->bytes;
    AddColumn({.name = "Number"});
    AddColumn({.name = "More", .type = kText, .size = 10});
    EXPECT_EQ(pager().Read(row.page)->bytes, page);
    EXPECT_EQ(Row(row), (RowValues{1, "a", Null{}, Null{}}));
}

TEST_P(SchemaWriter, BuildsAnIndexOverTheRowsThatAreThere) {
    MakeTable({{.name = "Id"}, {.name = "Text", .type = kText, .size = 20}});
    Change([&] {
        jet::TableWriter writer(file(), Table());
        for (int i = 0; i < 3000; ++i)
            writer.Insert({(i * 7919) % 3000, "text " + std::to_string(i % 100)});
    });
    AddPrimaryKey("Id");
    AddIndex({.name = "Text", .parts = {{.column = "Text", .ascending = false}}});
    EXPECT_EQ(IndexOf("PrimaryKey").built_entries, 3000U);
    EXPECT_EQ(IndexOf("PrimaryKey").distinct_keys, 3000U);
    EXPECT_EQ(IndexOf("Text").distinct_keys, 100U);
    EXPECT_EQ(IndexOf("Text").real_number, 1U);
    EXPECT_EQ(IndexOf("Text").logical_number, 1U);
    const auto by_key = RowsByIndex(file(), Table(), "PrimaryKey");
    for (int i = 0; i < 3000; ++i)
        EXPECT_EQ(by_key[static_cast<std::size_t>(i)][0], runtime::Variant(i));
    EXPECT_EQ(RowsByIndex(file(), Table(), "Text").front()[1], runtime::Variant("text 99"));
    EXPECT_GT(jet::ReadUsageMap(pager(), IndexOf("PrimaryKey").map).size(), 3U);
}

TEST_P(SchemaWriter, RefusesAnIndexThatTheRowsContradict) {
    MakeTable({{.name = "Id"}, {.name = "A"}, {.name = "Text", .type = kText, .size = 20}});
    Insert({1, Null{}, "x"});
    Insert({2, Null{}, "X"});
    Insert({2, 3, Null{}});
    const auto before = ContentOf(file());
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "Id"}}, .unique = true}), kDuplicate);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "Text"}}, .unique = true}), kDuplicate);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "A"}}, .primary = true}), kNullInKey);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "A"}}, .required = true}), kNullInKey);
    EXPECT_EQ(ContentOf(file()), before);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "A"}}, .unique = true}), 0) << "nulls may repeat";
}

TEST_P(SchemaWriter, RefusesASecondOfTheSameName) {
    MakeTable({{.name = "Id"}, {.name = "A"}});
    AddPrimaryKey("Id");
    EXPECT_EQ(ErrorMaking("t"), kTableExists);
    EXPECT_EQ(ErrorMaking("MSysObjects"), kTableExists);
    EXPECT_EQ(ErrorMaking("U", {{.name = "A"}, {.name = "a"}}), kDuplicateField);
    EXPECT_EQ(ErrorAddingColumn({.name = "ID"}), kDuplicateField);
    EXPECT_EQ(ErrorAddingIndex({.name = "PRIMARYKEY", .parts = {{.column = "A"}}}), kIndexExists);
    EXPECT_EQ(ErrorAddingIndex({.name = "B", .parts = {{.column = "A"}}, .primary = true}), kPrimaryKeyExists);
}

TEST_P(SchemaWriter, RefusesNamesThatAreNone) {
    MakeTable({{.name = "Id"}});
    for (const std::string& name :
         std::vector<std::string>{"", " A", "A.B", "A!", "[A", "A]", "A`", "A\n", LongName(0) + "x"}) {
        EXPECT_EQ(ErrorMaking(name), kInvalidName) << name;
        EXPECT_EQ(ErrorMaking("U", {{.name = name}}), kInvalidName) << name;
        EXPECT_EQ(ErrorAddingColumn({.name = name}), kInvalidName) << name;
        EXPECT_EQ(ErrorAddingIndex({.name = name, .parts = {{.column = "Id"}}}), kInvalidName) << name;
    }
    EXPECT_EQ(ErrorMaking(LongName(0)), 0);
    EXPECT_EQ(ErrorMaking("Caf\u00E9 's \"#1\""), 0);
}

TEST_P(SchemaWriter, RefusesColumnsThatNoRowHasRoomFor) {
    std::vector<jet::NewColumn> columns;
    for (std::size_t i = 0; i < 254; ++i)
        columns.push_back({.name = "C" + std::to_string(i), .type = kGuid});
    EXPECT_EQ(ErrorMaking("U", columns), kRecordTooLarge);
    columns.resize(IsJet4() ? 250 : 120);
    MakeTable(columns);
    const RowId row = Insert(RowValues(columns.size()));
    int error = 0;
    std::size_t added = 0;
    while (error == 0 && added < 10)
        error = ErrorAddingColumn({.name = "D" + std::to_string(added++), .type = kGuid});
    EXPECT_EQ(error, kRecordTooLarge);
    Update(row, {});
    EXPECT_EQ(Rows().size(), 1U);
}

// In the older generation a row has a byte for each 256 of its length.
TEST_P(SchemaWriter, CountsAllBytesOfTheShortestRow) {
    std::vector<jet::NewColumn> columns{{.name = "Text", .type = kText, .size = 1}};
    for (int i = 0; i < 124; ++i)
        columns.push_back({.name = "C" + std::to_string(i), .type = kGuid});
    EXPECT_EQ(ErrorMaking("U", columns), 0);
    columns.push_back({.name = "A"});
    EXPECT_EQ(ErrorMaking("V", columns), IsJet4() ? 0 : kRecordTooLarge);
}

TEST_P(SchemaWriter, TakesTheTypesOfTheGenerationOnly) {
    MakeTable({{.name = "Memo", .type = kMemo}});
    EXPECT_EQ(ErrorAddingColumn({.name = "N", .type = kNumeric, .precision = 18, .scale = 2}),
              IsJet4() ? 0 : kInvalidFieldType);
    EXPECT_EQ(ErrorAddingColumn({.name = "A", .type = kOpaque17}), kInvalidFieldType);
    EXPECT_EQ(ErrorAddingColumn({.name = "B", .type = static_cast<jet::ColumnType>(99)}), kInvalidFieldType);
    EXPECT_EQ(ErrorAddingColumn({.name = "C", .type = kText, .size = 256}), kInvalidFieldType);
    EXPECT_EQ(ErrorAddingColumn({.name = "D", .type = kText}), 0);
    EXPECT_EQ(Table().columns.back().Characters(), 255U);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "Memo"}}}), kInvalidFieldType);
}

TEST_P(SchemaWriter, RefusesIndexesThatCannotBe) {
    std::vector<jet::NewColumn> columns;
    std::vector<jet::NewIndex::Part> parts;
    for (int i = 0; i < 11; ++i) {
        columns.push_back({.name = "C" + std::to_string(i)});
        parts.push_back({.column = columns.back().name});
    }
    MakeTable(columns);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {}}), kInvalidIndex);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = parts}), kInvalidIndex);
    EXPECT_EQ(ErrorAddingIndex({.name = "I", .parts = {{.column = "X"}}}), kItemNotFound);
    parts.pop_back();
    AddIndex({.name = "Ten", .parts = parts});
    Insert(RowValues(11, 5));
    for (int i = 1; i < 32; ++i)
        AddIndex({.name = "I" + std::to_string(i), .parts = {{.column = "C1"}}});
    EXPECT_EQ(ErrorAddingIndex({.name = "One more", .parts = {{.column = "C1"}}}), kTooManyIndexes);
    EXPECT_EQ(Table().indexes.size(), 32U);
}

TEST_P(SchemaWriter, TakesItsPagesBackWhenAChangeIsGivenUp) {
    MakePets();
    const auto before = ContentOf(file());
    {
        jet::Transaction change(file());
        jet::CreateTable(file(), "U", {{.name = "A"}});
        jet::AddColumn(file(), Table(), {.name = "More", .type = kMemo});
    }
    EXPECT_EQ(ContentOf(file()), before);
    EXPECT_FALSE(file().FindTable("U"));
    EXPECT_EQ(Table().columns.size(), 4U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, SchemaWriter, kBothGenerations, GenerationName);

// Tables of files that other software made get a column and an index.
class SchemaOfOthers : public testing::TestWithParam<std::string> {};

TEST_P(SchemaOfOthers, KeepsEveryByteOfWhatItDoesNotChange) {
    std::vector<std::uint8_t> content;
    {
        jet::DatabaseFile source(jet::OpenPageFile(GetParam()));
        content = ContentOf(source);
    }
    jet::DatabaseFile file(jet::MakeMemoryFile(content));
    const jet::Format& format = file.format();
    const std::string faults = Faults(file, jet::Strictness::kAnyWriter);
    for (const jet::CatalogEntry& entry : file.ReadCatalog()) {
        if (!entry.IsUserTable())
            continue;
        const PageNumber page = entry.DefinitionPage();
        const auto rows = ReadRows(file, file.ReadTableDefinition(page));
        const auto before = jet::SplitDefinition(format, jet::ReadStoredDefinition(file.pager(), page).bytes);
        jet::Transaction change(file);
        const jet::TableDefinition table =
            jet::AddColumn(file, file.ReadTableDefinition(page), {.name = "Added here", .type = kMemo});
        jet::CreateIndex(file, jet::AddColumn(file, table, {.name = "Number here"}),
                         {.name = "Index here", .parts = {{.column = "Number here"}}});
        change.Commit();
        auto after = jet::SplitDefinition(format, jet::ReadStoredDefinition(file.pager(), page).bytes);
        ASSERT_EQ(after.columns.size(), before.columns.size() + 2) << entry.name;
        ASSERT_EQ(after.index_blocks.size(), before.index_blocks.size() + 1) << entry.name;
        after.columns.resize(before.columns.size());
        after.column_names.resize(before.column_names.size());
        after.statistics.pop_back();
        after.index_blocks.pop_back();
        after.logical_indexes.pop_back();
        after.index_names.pop_back();
        after.long_column_maps.pop_back();
        EXPECT_EQ(after.columns, before.columns) << entry.name;
        EXPECT_EQ(after.column_names, before.column_names) << entry.name;
        EXPECT_EQ(after.statistics, before.statistics) << entry.name;
        EXPECT_EQ(after.index_blocks, before.index_blocks) << entry.name;
        EXPECT_EQ(after.logical_indexes, before.logical_indexes) << entry.name;
        EXPECT_EQ(after.index_names, before.index_names) << entry.name;
        EXPECT_EQ(after.long_column_maps, before.long_column_maps) << entry.name;
        for (std::size_t i = jet::kDefinitionPageHeader + sizeof(std::uint32_t); i < before.header.size(); ++i) {
            const bool count = i >= format.definition.columns_ever && i < format.definition.owned_map;
            EXPECT_TRUE(count || after.header[i] == before.header[i]) << entry.name << ", byte " << i;
        }
        EXPECT_EQ(ReadRows(file, file.ReadTableDefinition(page)).size(), rows.size());
    }
    EXPECT_EQ(Faults(file, jet::Strictness::kAnyWriter), faults);
}

INSTANTIATE_TEST_SUITE_P(SampleFiles, SchemaOfOthers, testing::ValuesIn(SampleFiles()), FileTestName);

}  // namespace

}  // namespace ledgix::test
