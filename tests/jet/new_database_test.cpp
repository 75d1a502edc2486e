#include "new_database.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "byte_order.h"
#include "database_file.h"
#include "definition_writer.h"
#include "hex.h"
#include "index_check.h"
#include "index_cursor.h"
#include "jet_test.h"
#include "mdbtools_judge.h"
#include "read_everything.h"
#include "row_reader.h"
#include "table_rows.h"
#include "temporary_folder.h"
#include "usage_map.h"

namespace ledgix::test {

namespace {

using jet::CatalogEntry;
using jet::Generation;
using jet::PageNumber;
using jet::RowId;
using runtime::Binary;

constexpr runtime::Date kCreated{36526.5};
constexpr std::int32_t kTables = 0x0F000001;
constexpr std::int32_t kDatabases = 0x0F000002;
constexpr std::int32_t kRelationships = 0x0F000003;
constexpr std::int32_t kDatabaseObject = 0x10000000;
constexpr char const* kSystemTables[]{"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"};

constexpr char kHeaderStart[] =
    "00 01 00 00 53 74 61 6E 64 61 72 64 20 4A 65 74 20 44 42 00 01 00 00 00"
    "B5 6E 03 62 60 09 C2 55 E9 A9 67 72 40 3F 00 9C 7E 9F 90 FF 85 9A 31 C5";
constexpr char kHeaderJet4[] =
    "79 BA ED 30 BC DF CC 9D 63 D9 E4 C3 9F 46 FB 8A BC 4E DF 5E EC 37 04 E1 9C FA 9F FB 28 E6 4A 13"
    "8A 60 0D 31 7B 36 AC D7 DF B1 2E 51 13 43 96 0A B1 33 6D C4 79 5B CB 10 7C 2A 19 D7 7C 99 08 1F"
    "98 FD 2C CA 99 AF 52 95 84 66 5F 95 F8 D0 89 24 85 67 C6 1F 27 44 D2 EE CF 65 ED FF 07 C7 46 A1"
    "78 16 0C ED E9 2D 62 D4 54 06 00 00 34 2E 30 00";
// Country, sort order, code page and build number apart, it is the key stream of the mask.
constexpr char kHeaderJet3[] =
    "79 BA ED 30 BC DF CC 9D 62 D9 ED C7 9F 46 FB 8A BC 4E 86 FB EC 37 5D 44 9C FA C6 5E 28 E6 13 B6"
    "8A 60 54 94 7B 36 EB 57 DF B1 77 F4 13 43 CF AF B1 33 34 61 79 5B 92 B5 7C 2A 05 F1 7C 99 01 1B"
    "98 FD 12 4F 4A 94 6C 3E 60 26 5F 95 F8 D0 89 24 85 67 C6 1F 27 44 D2 EE CF 65 ED FF 07 C7 46 A1"
    "78 16 0C ED E9 2D 00 00 00 00 00 00 00 00 00 00";

ByteList Part(const std::vector<std::uint8_t>& bytes, std::size_t from, std::size_t size) {
    const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return {start, start + static_cast<std::ptrdiff_t>(size)};
}

class NewFile : public testing::TestWithParam<Generation> {
protected:
    bool IsJet4() const { return GetParam() == Generation::kJet4; }
    const jet::Format& format() const { return jet::FormatOf(GetParam()); }
    PageNumber page_count() const { return static_cast<PageNumber>(content_.size() / format().page_size); }
    ByteList PageBytes(PageNumber page) const { return Part(content_, page * format().page_size, format().page_size); }
    std::uint16_t FreeBytes(PageNumber page) const { return jet::LoadU16(PageBytes(page), 2); }

    std::string Save() const {
        return folder_.Write("new.mdb", {reinterpret_cast<const char*>(content_.data()), content_.size()});
    }

    // Security identifiers, for this generation.
    Binary Engine() const { return IsJet4() ? Binary{0x65, 0x89} : Binary{0x02, 0x03}; }
    Binary Admin() const { return IsJet4() ? Binary{0x64, 0x8B} : Binary{0x03, 0x01}; }
    Binary Creator() const { return IsJet4() ? Binary{0x65, 0x8E} : Binary{0x02, 0x04}; }
    Binary Users() const { return IsJet4() ? Binary{0x65, 0x8B} : Binary{0x02, 0x01}; }

    const std::vector<std::uint8_t> content_ = jet::NewDatabase(GetParam(), kCreated);
    jet::DatabaseFile file_{jet::MakeMemoryFile(content_)};
    TemporaryFolder folder_;
};

// The values of a row in the order of the columns' numbers.
using Row = std::vector<runtime::Variant>;

std::vector<Row> RowsByNumber(jet::DatabaseFile& file, PageNumber page) {
    const jet::TableDefinition table = file.ReadTableDefinition(page);
    std::vector<Row> rows;
    for (const NamedRow& named : ReadRows(file, table)) {
        Row& row = rows.emplace_back(table.columns.size());
        for (std::size_t i = 0; i < named.size(); ++i)
            row[table.columns[i].number] = named[i].second;
    }
    return rows;
}

TEST_P(NewFile, HasSixteenOrTwentyPages) {
    EXPECT_EQ(content_.size(), IsJet4() ? 16U * 4096 : 20U * 2048);
}

TEST_P(NewFile, HasTheHeaderThatTheEngineWrites) {
    ByteList start = Hex(kHeaderStart);
    start[0x14] = IsJet4() ? 1 : 0;
    EXPECT_EQ(Part(content_, 0, start.size()), start);
    EXPECT_EQ(Part(content_, 0x30, 0x70), Hex(IsJet4() ? kHeaderJet4 : kHeaderJet3));
}

TEST_P(NewFile, IsOpenedByNobody) {
    ByteList cells(512);
    for (std::size_t i = 1; i < cells.size(); i += 2)
        cells[i] = 1;
    cells[0] = 1;
    EXPECT_EQ(Part(content_, IsJet4() ? 0xE00 : 0x600, 512), cells);
    const ByteList between = Part(content_, 0xA0, (IsJet4() ? 0xE00U : 0x600U) - 0xA0);
    EXPECT_EQ(between, ByteList(between.size()));
}

TEST_P(NewFile, MarksThePagesBehindItsEndAsFree) {
    const ByteList page = PageBytes(1);
    const ByteList head = IsJet4() ? Hex("01 01 64 0F 01 00 00 00 00 00 00 00 02 00 BB 0F 76 0F")
                                   : Hex("01 01 E8 06 01 00 00 00 02 00 7B 07 F6 06");
    EXPECT_EQ(Part(page, 0, head.size()), head);
    const std::size_t map_size = IsJet4() ? 69 : 133;
    ByteList map(map_size);
    std::fill(map.begin() + 7, map.end(), std::uint8_t{0xFF});
    if (!IsJet4())
        map[7] = 0xF0;
    EXPECT_EQ(Part(page, page.size() - map_size, map_size), map);
    EXPECT_EQ(Part(page, page.size() - 2 * map_size, map_size), ByteList(map_size));
}

TEST_P(NewFile, HasDefinitionsOfTheLengthsThatTheEngineWrites) {
    const std::vector<std::uint32_t> lengths =
        IsJet4() ? std::vector<std::uint32_t>{1050, 335, 525, 813} : std::vector<std::uint32_t>{708, 223, 319, 526};
    for (PageNumber i = 0; i < 4; ++i) {
        EXPECT_EQ(jet::LoadU32(PageBytes(i + 2), 8), lengths[i]);
        EXPECT_EQ(FreeBytes(i + 2), IsJet4() ? 4096 - 8 - lengths[i] : 0x4356);
    }
}

TEST_P(NewFile, HasItsPagesInThePlacesWhereTheEngineHasThem) {
    const std::string kinds = IsJet4() ? "0122221444444411" : "01222211141414444411";
    std::string ours;
    for (PageNumber page = 0; page < page_count(); ++page)
        ours += static_cast<char>('0' + PageBytes(page)[0]);
    EXPECT_EQ(ours, kinds);
    const auto slots = [&](PageNumber page) { return jet::LoadU16(PageBytes(page), format().data_page.slot_count); };
    if (IsJet4()) {
        EXPECT_EQ(slots(6), 31);
        EXPECT_EQ(FreeBytes(6), 1881);
        return;
    }
    EXPECT_EQ(slots(6), 15);
    EXPECT_EQ(slots(7), 1);
    EXPECT_EQ(slots(8), 1);
    EXPECT_EQ(slots(10), 1);
    EXPECT_EQ(slots(12), 13);
}

TEST_P(NewFile, HasTheMapsAndRootsOfTheEngine) {
    const bool jet4 = IsJet4();
    const auto table = [&](PageNumber page) { return file_.ReadTableDefinition(page); };
    const auto root = [&](PageNumber page, const char* index) { return table(page).FindIndex(index)->root; };
    const auto map = [&](PageNumber page, const char* index) { return table(page).FindIndex(index)->map; };
    EXPECT_EQ(table(2).owned_map, (RowId{6, 0}));
    EXPECT_EQ(table(2).free_space_map, (RowId{6, 1}));
    const jet::TableDefinition objects = table(2);
    EXPECT_EQ(objects.columns[objects.FindColumn("Database").value()].owned_map, (RowId{6, 2}));
    const jet::Column& last = objects.columns[objects.FindColumn("LvExtra").value()];
    EXPECT_EQ(last.owned_map, (RowId{6, 14}));
    EXPECT_EQ(last.free_space_map, jet4 ? (RowId{6, 15}) : (RowId{7, 0}));
    EXPECT_EQ(map(2, "ParentIdName"), jet4 ? (RowId{6, 16}) : (RowId{8, 0}));
    EXPECT_EQ(map(2, "Id"), jet4 ? (RowId{6, 17}) : (RowId{10, 0}));
    EXPECT_EQ(root(2, "ParentIdName"), jet4 ? 7U : 9U);
    EXPECT_EQ(root(2, "Id"), jet4 ? 8U : 11U);
    EXPECT_EQ(table(3).owned_map, jet4 ? (RowId{6, 18}) : (RowId{12, 0}));
    EXPECT_EQ(root(3, "ObjectId"), jet4 ? 9U : 13U);
    EXPECT_EQ(table(4).owned_map, jet4 ? (RowId{6, 21}) : (RowId{12, 3}));
    EXPECT_EQ(map(4, "ObjectIdAttribute"), jet4 ? (RowId{6, 25}) : (RowId{12, 7}));
    EXPECT_EQ(root(4, "ObjectIdAttribute"), jet4 ? 10U : 14U);
    EXPECT_EQ(root(5, "szRelationship"), jet4 ? 11U : 15U);
    EXPECT_EQ(root(5, "szObject"), jet4 ? 12U : 16U);
    EXPECT_EQ(root(5, "szReferencedObject"), jet4 ? 13U : 17U);
    EXPECT_EQ(map(5, "szReferencedObject"), jet4 ? (RowId{6, 30}) : (RowId{12, 12}));
}

TEST_P(NewFile, HasEveryPageInExactlyOnePlace) {
    std::multiset<PageNumber> used{0, 1, 2, 3, 4, 5};
    std::set<PageNumber> map_pages;
    const auto add = [&](RowId map) {
        map_pages.insert(map.page);
        for (const PageNumber page : jet::ReadUsageMap(file_.pager(), map))
            used.insert(page);
    };
    for (PageNumber page = 2; page <= 5; ++page) {
        const jet::TableDefinition table = file_.ReadTableDefinition(page);
        add(table.owned_map);
        map_pages.insert(table.free_space_map.page);
        EXPECT_EQ(jet::ReadUsageMap(file_.pager(), table.owned_map),
                  jet::ReadUsageMap(file_.pager(), table.free_space_map));
        for (const jet::Index& index : table.indexes) {
            EXPECT_EQ(jet::ReadUsageMap(file_.pager(), index.map), std::vector<PageNumber>{index.root});
            add(index.map);
        }
        for (const jet::Column& column : table.columns) {
            if (!jet::IsLongValue(column.type))
                continue;
            add(column.owned_map);
            add(column.free_space_map);
        }
    }
    used.insert(map_pages.begin(), map_pages.end());
    EXPECT_EQ(used.size(), page_count());
    EXPECT_EQ(std::set<PageNumber>(used.begin(), used.end()).size(), page_count());
}

TEST_P(NewFile, ListsTheSystemObjectsInItsCatalogue) {
    const Binary engine = Engine();
    const auto object = [&](std::int32_t id, std::int32_t parent, const char* name, int type, const Binary& owner) {
        Row row{id, parent, name, static_cast<std::int16_t>(type), kCreated, kCreated, owner, INT32_MIN};
        row.resize(17);
        return row;
    };
    const std::vector<Row> expected{object(kTables, 0x0F000000, "Tables", 3, engine),
                                    object(kDatabases, 0x0F000000, "Databases", 3, engine),
                                    object(kRelationships, 0x0F000000, "Relationships", 3, engine),
                                    object(kDatabaseObject, kDatabases, "MSysDb", 2, Admin()),
                                    object(2, kTables, "MSysObjects", 1, engine),
                                    object(3, kTables, "MSysACEs", 1, engine),
                                    object(4, kTables, "MSysQueries", 1, engine),
                                    object(5, kTables, "MSysRelationships", 1, engine)};
    EXPECT_EQ(RowsByNumber(file_, 2), expected);
}

TEST_P(NewFile, GrantsTheRightsThatTheEngineGrants) {
    const std::vector<Row> expected{
        {2, Admin(), 0x60000, false},
        {3, Admin(), 0x60000, false},
        {4, Admin(), 0x60000, false},
        {5, Admin(), 0xE0000, false},
        {kTables, Creator(), 0xF00FE, true},
        {kTables, Admin(), 0x60001, false},
        {kRelationships, Creator(), 0xF00FE, true},
        {kRelationships, Admin(), 0x60001, false},
        {kDatabases, Admin(), 0x60000, false},
        {kDatabaseObject, Admin(), 0x6000E, false},
        {kDatabaseObject, Users(), 0x0000E, false},
        {4, Users(), 0x00014, false},
        {5, Users(), 0x00014, false},
        {2, Users(), 0x00014, false},
        {kTables, Users(), 0xFFEFF, true},
        {kRelationships, Users(), 0xFFFFF, true},
    };
    EXPECT_EQ(RowsByNumber(file_, 3), expected);
}

TEST_P(NewFile, HasNoQueriesRelationsAndUserTables) {
    EXPECT_TRUE(RowsByNumber(file_, 4).empty());
    EXPECT_TRUE(RowsByNumber(file_, 5).empty());
    std::vector<std::string> tables;
    for (const CatalogEntry& entry : file_.ReadCatalog()) {
        EXPECT_FALSE(entry.IsUserTable()) << entry.name;
        if (entry.IsSystemTable())
            tables.push_back(entry.name);
    }
    EXPECT_EQ(tables, std::vector<std::string>(std::begin(kSystemTables), std::end(kSystemTables)));
}

TEST_P(NewFile, FindsEveryObjectByItsIdAndByItsParentAndName) {
    const jet::TableDefinition table = file_.ReadTableDefinition(2);
    jet::RowReader reader(file_, table);
    const auto id = table.FindColumn("Id").value();
    const auto find = [&](const char* index, const Row& values) {
        std::vector<runtime::Variant> ids;
        for (const RowId row : jet::FindRows(file_, table, *table.FindIndex(index), values)) {
            EXPECT_TRUE(reader.Load(row));
            ids.push_back(reader.Value(id));
        }
        return ids;
    };
    for (const CatalogEntry& entry : file_.ReadCatalog()) {
        EXPECT_EQ(find("Id", {entry.id}), Row{entry.id});
        EXPECT_EQ(find("ParentIdName", {entry.parent_id, entry.name}), Row{entry.id});
    }
    EXPECT_EQ(find("ParentIdName", {kTables, "msysaces"}), Row{3});
    EXPECT_EQ(find("Id", {6}), Row{});
    EXPECT_EQ(find("ParentIdName", {kDatabases, "MSysACEs"}), Row{});
}

TEST_P(NewFile, HasIndexEntriesForAllRowsAndCountsThem) {
    for (PageNumber page = 2; page <= 5; ++page) {
        const jet::TableDefinition table = file_.ReadTableDefinition(page);
        const std::size_t rows = ReadRows(file_, table).size();
        EXPECT_EQ(table.row_count, rows);
        for (const jet::Index& index : table.indexes) {
            const IndexCheck check = CheckIndex(file_, table, index);
            EXPECT_EQ(check.difference, "") << index.name;
            EXPECT_EQ(check.entries, rows) << index.name;
            EXPECT_EQ(index.distinct_keys, page == 3 ? 8U : rows) << index.name;
            EXPECT_EQ(index.built_entries, 0U);
        }
    }
    const Everything everything = ReadEverything(content_);
    EXPECT_EQ(everything.errors, 0U);
    EXPECT_EQ(everything.entries, 8U + 8 + 16);
}

TEST_P(NewFile, BeginsTheLeafOfAnIndexAsTheEngineDoes) {
    const jet::TableDefinition table = file_.ReadTableDefinition(2);
    const ByteList leaf = PageBytes(table.FindIndex("Id")->root);
    // Eight entries of nine bytes: the bits for places 9, 18 and so on.
    const std::size_t used = 8 * 9;
    const std::size_t first = IsJet4() ? 0x1E0 : 0xF8;
    ByteList head = Hex("04 01 00 00 02 00 00 00");
    jet::StoreLittle(head, 2, static_cast<std::uint16_t>(format().page_size - first - used));
    head.resize(IsJet4() ? 27 : 22);
    const ByteList mask = Hex("00 02 04 08 10 20 40 80 00 01");
    head.insert(head.end(), mask.begin(), mask.end());
    head.resize(first);
    EXPECT_EQ(Part(leaf, 0, first), head);
    EXPECT_EQ(Part(leaf, first, 9), Hex(IsJet4() ? "7F 80 00 00 02 00 00 0E 04" : "7F 80 00 00 02 00 00 12 04"));
}

TEST_P(NewFile, IsReadByMdbtoolsAsByUs) {
    if (!HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    const std::string path = Save();
    EXPECT_TRUE(JudgeTables(path, false).empty());
    EXPECT_EQ(JudgeTables(path, true), std::vector<std::string>(std::begin(kSystemTables), std::end(kSystemTables)));
    const std::size_t expected_rows[]{8, 16, 0, 0};
    for (std::size_t i = 0; i < std::size(kSystemTables); ++i) {
        const std::vector<nlohmann::json> theirs = JudgeRows(path, kSystemTables[i]);
        EXPECT_EQ(theirs.size(), expected_rows[i]);
        EXPECT_TRUE(SameRows(theirs, ReadRows(file_, kSystemTables[i]))) << kSystemTables[i];
    }
}

TEST_P(NewFile, BearsTheDateOfItsMakingInTheCatalogueOnly) {
    const std::vector<std::uint8_t> later = jet::NewDatabase(GetParam(), {45000.25});
    ASSERT_EQ(later.size(), content_.size());
    const PageNumber catalogue = IsJet4() ? 14 : 18;
    for (PageNumber page = 0; page < page_count(); ++page) {
        const ByteList theirs = Part(later, page * format().page_size, format().page_size);
        EXPECT_EQ(theirs == PageBytes(page), page != catalogue) << page;
    }
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, NewFile, kBothGenerations, GenerationName);

// The definition of a system table without what changes as the table is used, and the unused offsets of variable
// columns.
ByteList Unchanging(jet::DatabaseFile& file, PageNumber page) {
    jet::TableDefinition table = file.ReadTableDefinition(page);
    table.row_count = 0;
    for (jet::Index& index : table.indexes)
        index.distinct_keys = 0;
    for (jet::Column& column : table.columns)
        column.fixed_offset = column.fixed ? column.fixed_offset : std::uint16_t{0};
    return jet::EncodeDefinition(file.format(), table);
}

TEST(NewFileOfJet4, HasTheSystemTablesOfTheSampleFiles) {
    jet::DatabaseFile theirs(jet::OpenPageFile(LEDGIX_TEST_DATA "/mdb/household-empty.mdb"));
    jet::DatabaseFile ours(jet::MakeMemoryFile(jet::NewDatabase(Generation::kJet4, kCreated)));
    for (PageNumber page = 2; page <= 5; ++page)
        EXPECT_EQ(Unchanging(ours, page), Unchanging(theirs, page)) << "page " << page;
}

}  // namespace

}  // namespace ledgix::test
