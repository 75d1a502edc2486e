#include "compact.h"

#include <gtest/gtest.h>

#include "access.h"
#include "damage.h"
#include "database_builder.h"
#include "definition_parts.h"
#include "definition_reader.h"
#include "forwarding_file.h"
#include "index_cursor.h"
#include "index_tree_check.h"
#include "jet_test.h"
#include "new_database.h"
#include "sample_database.h"
#include "schema_writer.h"
#include "structure_check.h"
#include "table_rows.h"
#include "table_writer.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

using jet::ColumnType;
using jet::DatabaseFile;
using jet::Generation;
using jet::NewIndex;
using jet::TableDefinition;
using runtime::Null;

constexpr runtime::Date kToday{46000.5};

DatabaseFile NewFile(Generation generation) {
    return DatabaseFile(jet::MakeMemoryFile(jet::NewDatabase(generation, kToday)));
}

// A new file with the content of another one, gone when the object is.
class CompactedFile {
public:
    explicit CompactedFile(DatabaseFile& source)
        : result_(jet::Compact(source, folder_.File("source.mdb"), path_, kToday)), file_(jet::OpenPageFile(path_)) {}

    const jet::Compacted& result() const { return result_; }
    DatabaseFile& file() { return file_; }
    TableDefinition Table(const std::string& name) {
        return file_.ReadTableDefinition(file_.FindTable(name).value().DefinitionPage());
    }
    std::string FolderList() const { return folder_.List(); }

private:
    TemporaryFolder folder_;
    std::string path_ = folder_.File("compacted.mdb");
    jet::Compacted result_;
    DatabaseFile file_;
};

// What a maker of the table would ask for.
std::string Describe(const TableDefinition& table) {
    std::string text;
    for (const jet::Column& column : table.columns)
        text += column.name + " " + std::to_string(static_cast<int>(column.type)) + " " +
                std::to_string(column.length) + " " + std::to_string(column.precision) + " " +
                std::to_string(column.scale) + (column.autonumber ? " counts" : "") + "\n";
    return text + "next " + std::to_string(table.last_autonumber + 1) + "\n";
}

std::string Describe(const TableDefinition& table, const jet::Index& index) {
    std::string text = index.name + ":";
    for (const jet::IndexColumn& column : index.columns)
        text += " " + table.columns[table.FindColumnByNumber(column.column_number).value()].name +
                (column.ascending ? "" : " down");
    return text + (index.primary ? " primary" : "") + (index.unique ? " unique" : "") +
           (index.required ? " required" : "") + (index.ignore_nulls ? " ignores nulls" : "");
}

std::vector<std::string> Indexes(const TableDefinition& table) {
    std::vector<std::string> texts;
    for (const jet::Index& index : table.indexes)
        texts.push_back(Describe(table, index));
    std::sort(texts.begin(), texts.end());
    return texts;
}

std::vector<jet::IndexKey> Keys(DatabaseFile& file, const TableDefinition& table, const jet::Index& index) {
    std::vector<jet::IndexKey> keys;
    for (jet::IndexCursor cursor(file, table, index); cursor.Next();)
        keys.emplace_back(cursor.key().begin(), cursor.key().end());
    return keys;
}

// Each index has the keys of the source, in a sound tree.
void ExpectSameKeys(DatabaseFile& source, const TableDefinition& from, DatabaseFile& target,
                    const TableDefinition& to) {
    for (const jet::Index& index : to.indexes) {
        const jet::Index* original = from.FindIndex(index.name);
        ASSERT_NE(original, nullptr) << index.name;
        EXPECT_EQ(Keys(target, to, index), Keys(source, from, *original)) << index.name;
        EXPECT_EQ(CheckIndexTree(target.pager(), to.page, index).fault, "") << index.name;
    }
}

void ExpectSameContent(DatabaseFile& source, CompactedFile& compacted) {
    std::size_t tables = 0;
    for (const jet::CatalogEntry& entry : source.ReadCatalog()) {
        if (!entry.IsUserTable())
            continue;
        SCOPED_TRACE(entry.name);
        ++tables;
        const TableDefinition from = source.ReadTableDefinition(entry.DefinitionPage());
        const TableDefinition to = compacted.Table(entry.name);
        EXPECT_EQ(Describe(to), Describe(from));
        EXPECT_TRUE(ReadRows(compacted.file(), to) == ReadRows(source, from));
        EXPECT_EQ(Indexes(to), Indexes(from));
        ExpectSameKeys(source, from, compacted.file(), to);
    }
    EXPECT_EQ(compacted.result().tables, tables);
    for (const jet::Finding& finding : jet::CheckStructure(compacted.file().pager(), jet::Strictness::kOwnFiles))
        ADD_FAILURE() << finding.code << " " << finding.text;
}

class CompactOfSample : public testing::TestWithParam<std::string> {};

TEST_P(CompactOfSample, HasTheSameTablesRowsAndIndexes) {
    DatabaseFile source(jet::OpenPageFile(GetParam()));
    CompactedFile compacted(source);
    ExpectSameContent(source, compacted);
    EXPECT_EQ(compacted.FolderList(), "compacted.mdb");
}

INSTANTIATE_TEST_SUITE_P(Samples, CompactOfSample, testing::ValuesIn(SampleFiles()), FileTestName);

class Compact : public testing::TestWithParam<Generation> {
protected:
    DatabaseFile source = NewFile(GetParam());
};

TEST_P(Compact, KeepsEveryKindOfColumnAndRow) {
    DatabaseFile sample(jet::MakeMemoryFile(BuildSampleDatabase(GetParam())));
    CompactedFile compacted(sample);
    ExpectSameContent(sample, compacted);
    EXPECT_EQ(compacted.file().generation(), GetParam());
}

TEST_P(Compact, KeepsEveryKindOfIndex) {
    const std::vector<NewIndex> indexes{
        {.name = "Key", .parts = {{"A"}, {"B", false}}, .primary = true},
        {.name = "Down", .parts = {{"B", false}}},
        {.name = "Only once", .parts = {{"C"}}, .unique = true, .ignore_nulls = true},
        {.name = "Needed", .parts = {{"D"}, {"A"}}, .required = true},
    };
    {
        jet::Transaction transaction(source);
        TableDefinition table = jet::CreateTable(
            source, "T",
            {{.name = "A"}, {.name = "B"}, {.name = "C"}, {.name = "D", .type = ColumnType::kText, .size = 20}});
        for (const NewIndex& index : indexes)
            table = jet::CreateIndex(source, table, index);
        jet::TableWriter writer(source, table);
        for (int i = 0; i < 700; ++i)
            writer.Insert({i / 7, i % 7, i % 3 == 0 ? runtime::Variant(i) : runtime::Variant(Null{}),
                           "text " + std::to_string(i * 31 % 50)});
        transaction.Commit();
    }
    CompactedFile compacted(source);
    ExpectSameContent(source, compacted);
    EXPECT_EQ(compacted.result().rows, 700U);
    EXPECT_EQ(compacted.Table("T").indexes.size(), 4U);
}

TEST_P(Compact, KeepsNumbersThatTheEngineGaveAndTheNextOne) {
    {
        jet::Transaction transaction(source);
        jet::TableWriter writer(source,
                                jet::CreateTable(source, "T", {{.name = "Id", .autonumber = true}, {.name = "A"}}));
        for (int i = 0; i < 5; ++i)
            writer.Insert({Null{}, i});
        const jet::RowId unnumbered = writer.Insert({9, 100});
        writer.Update(unnumbered, {{0, Null{}}});
        writer.Delete(writer.Insert({Null{}, 6}));
        transaction.Commit();
    }
    CompactedFile compacted(source);
    ExpectSameContent(source, compacted);
    const std::vector<NamedRow> rows = ReadRows(compacted.file(), "T");
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_EQ(rows[4][0].second, runtime::Variant(5));
    EXPECT_TRUE(runtime::IsNull(rows[5][0].second));
    EXPECT_EQ(compacted.Table("T").last_autonumber, 10U);
}

TEST_P(Compact, TurnsIndexesOfRelationshipsIntoOrdinaryOnesUnlessThereIsAnEqualOne) {
    {
        jet::Transaction transaction(source);
        TableDefinition table = jet::CreateTable(source, "T", {{.name = "A"}, {.name = "B"}});
        for (const char* name : {"A", "AAgain", "BMaker"})
            table = jet::CreateIndex(source, table, {.name = name, .parts = {{name[0] == 'A' ? "A" : "B"}}});
        const jet::StoredDefinition stored = jet::ReadStoredDefinition(source.pager(), table.page);
        jet::DefinitionParts parts = jet::SplitDefinition(source.format(), stored.bytes);
        for (std::size_t i = 1; i < 3; ++i) {
            jet::Index index = table.indexes[i];
            index.is_relation = true;
            index.relation.emplace().other_table = table.page;
            parts.logical_indexes[i] = jet::MakeLogicalIndex(source.format(), index);
        }
        parts.index_names[2] = jet::MakeStoredName(source.format(), ".rA");
        const std::vector<std::uint8_t> changed = jet::JoinDefinition(source.format(), parts);
        std::copy(changed.begin(), changed.end(), source.pager().Change(table.page).begin());
        transaction.Commit();
    }
    ASSERT_TRUE(source.ReadTableDefinition(source.FindTable("T")->DefinitionPage()).FindIndex(".rA")->is_relation);
    CompactedFile compacted(source);
    const TableDefinition made = compacted.Table("T");
    EXPECT_EQ(Indexes(made), (std::vector<std::string>{"A: A", "rA: B"}));
    EXPECT_FALSE(made.FindIndex("rA")->is_relation);
}

TEST_P(Compact, CopiesTextWithoutReadingIt) {
    const runtime::Binary odd = GetParam() == Generation::kJet3
                                    ? runtime::Binary{'a', 0x81, 0x8D, 'b'}                     // not in the code page
                                    : runtime::Binary{'a', 0, 0x00, 0xD8, 'b', 0, 0x01, 0xDC};  // halves of characters
    const std::vector<jet::NewColumn> columns{{.name = "Text", .type = ColumnType::kText, .size = 20},
                                              {.name = "Memo", .type = ColumnType::kMemo}};
    const auto as_bytes = [](TableDefinition table) {
        table.columns[0].type = ColumnType::kBinary;
        table.columns[1].type = ColumnType::kOle;
        return table;
    };
    {
        jet::Transaction transaction(source);
        jet::TableWriter writer(source, as_bytes(jet::CreateTable(source, "T", columns)));
        writer.Insert({odd, odd});
        transaction.Commit();
    }
    CompactedFile compacted(source);
    const std::vector<NamedRow> rows = ReadRows(compacted.file(), as_bytes(compacted.Table("T")));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][0].second, runtime::Variant(odd));
    EXPECT_EQ(rows[0][1].second, runtime::Variant(odd));
}

TEST_P(Compact, CountsWhatItLeavesBehindByKind) {
    DatabaseBuilder builder(GetParam());
    builder.AddTable("T", {{.name = "A"}});
    builder.AddEntry(0x7000001, jet::kTablesContainer, "Linked", jet::kLinkedTableEntry, 0, "C:\\other.mdb", "Source");
    builder.AddEntry(0x7000002, jet::kTablesContainer, "Query", jet::kQueryEntry, 0);
    builder.AddEntry(0x7000003, jet::kTablesContainer, "Other query", jet::kQueryEntry, 0);
    builder.AddEntry(0x7000004, jet::kTablesContainer, "Form", -32768, 0);
    builder.AddEntry(0x7000005, jet::kTablesContainer, "Relation", jet::kRelationEntry, 0);
    DatabaseFile file = builder.Open();
    CompactedFile compacted(file);
    std::string text;
    for (const jet::LeftOut& kind : compacted.result().left_out)
        text += kind.kind + " " + std::to_string(kind.count) + "\n";
    EXPECT_EQ(text, "relationships 1\nqueries 2\nlinked tables 1\nforms 1\n");
    EXPECT_FALSE(compacted.file().FindTable("Linked"));
}

TEST_P(Compact, RefusesColumnsOfUnknownTypeAndSaysWhich) {
    DatabaseBuilder builder(GetParam());
    builder.AddTable("Known", {{.name = "A"}});
    builder.AddTable("Odd", {{.name = "A"}, {.name = "Strange", .type = ColumnType::kOpaque17, .characters = 10}});
    DatabaseFile file = builder.Open();
    const TemporaryFolder folder;
    try {
        jet::Compact(file, "", folder.File("new.mdb"), kToday);
        ADD_FAILURE() << "it was copied";
    } catch (const runtime::RuntimeError& error) {
        EXPECT_EQ(error.number(), 3259);
        EXPECT_NE(error.description().find("column 'Strange' of the table 'Odd'"), std::string::npos);
        EXPECT_NE(error.description().find("17"), std::string::npos);
    }
    EXPECT_EQ(folder.List(), "");
}

TEST_P(Compact, NeverTouchesAFileThatIsThere) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("there.mdb", "precious");
    EXPECT_ERROR(jet::Compact(source, "", path, kToday), 3204);
    EXPECT_EQ(Content(path), "precious");
    EXPECT_EQ(folder.List(), "there.mdb");
}

// The disk is full after a number of writes.
class FullDisk : public jet::FileSystem {
public:
    explicit FullDisk(std::size_t writes) : writes_left_(writes) {}

    std::unique_ptr<jet::PageFile> Open(const std::string& path, jet::OpenMode mode) override {
        return jet::DiskFileSystem().Open(path, mode);
    }
    std::unique_ptr<jet::PageFile> Create(const std::string& path, const std::string& like) override {
        return std::make_unique<File>(jet::DiskFileSystem().Create(path, like), writes_left_);
    }
    bool Exists(const std::string& path) override { return jet::DiskFileSystem().Exists(path); }
    void Remove(const std::string& path) override { jet::DiskFileSystem().Remove(path); }
    void SyncFolderOf(const std::string& path) override { jet::DiskFileSystem().SyncFolderOf(path); }

private:
    class File : public ForwardingFile {
    public:
        File(std::unique_ptr<jet::PageFile> file, std::size_t& writes_left)
            : ForwardingFile(std::move(file)), writes_left_(writes_left) {}
        void Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
            if (writes_left_ == 0)
                runtime::RaiseEngineError(runtime::ErrorNumber::kDiskFull, "No space.");
            --writes_left_;
            ForwardingFile::Write(offset, bytes);
        }

    private:
        std::size_t& writes_left_;
    };

    std::size_t writes_left_;
};

TEST_P(Compact, LeavesNoHalfFileWhenItFails) {
    DatabaseFile sample(jet::MakeMemoryFile(BuildSampleDatabase(GetParam())));
    const TemporaryFolder folder;
    std::size_t writes = 0;
    for (bool done = false; !done; ++writes) {
        FullDisk disk(writes);
        done = ErrorOf([&] { jet::Compact(sample, "", folder.File("new.mdb"), kToday, disk); }) == 0;
        EXPECT_EQ(folder.List(), done ? "new.mdb" : "") << writes;
    }
    EXPECT_GT(writes, 5U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Compact, kBothGenerations, GenerationName);

// Another code page would change what the bytes of the text mean.
TEST(CompactJet3, RefusesAFileOfAnotherCodePage) {
    std::vector<std::uint8_t> content = jet::NewDatabase(Generation::kJet3, kToday);
    constexpr std::size_t kCodePageAt = 0x3C;
    content[kCodePageAt] ^= (1252 ^ 1251) & 0xFF;  // masked in the file
    DatabaseFile source(jet::MakeMemoryFile(content));
    ASSERT_EQ(source.code_page(), 1251);
    const TemporaryFolder folder;
    EXPECT_ERROR(jet::Compact(source, "", folder.File("new.mdb"), kToday), 3251);
    EXPECT_EQ(folder.List(), "");
}

class DamagedCompact : public testing::TestWithParam<std::tuple<std::string, Damage>> {
protected:
    static std::vector<std::uint8_t> SoundFile(const std::string& name) {
        if (name == "Jet3" || name == "Jet4")
            return BuildSampleDatabase(name == "Jet3" ? Generation::kJet3 : Generation::kJet4);
        const std::string content = Content(LEDGIX_TEST_DATA "/mdb/household-" + name + ".mdb");
        return {content.begin(), content.end()};
    }
};

TEST_P(DamagedCompact, GivesAFileOrAnErrorAndNoHalfFile) {
    constexpr std::uint32_t kDamagesOfAKind = 60;
    const auto& [name, damage] = GetParam();
    const std::vector<std::uint8_t> sound = SoundFile(name);
    const TemporaryFolder folder;
    std::size_t refused = 0;
    for (std::uint32_t seed = 0; seed < kDamagesOfAKind; ++seed) {
        SCOPED_TRACE(seed);
        const std::string path = folder.File(std::to_string(seed) + ".mdb");
        const int error = ErrorOf([&] {
            DatabaseFile source(jet::MakeMemoryFile(Damaged(sound, damage, seed)));
            jet::Compact(source, "", path, kToday);
        });
        refused += error != 0 ? 1U : 0U;
        EXPECT_EQ(Content(path).empty(), error != 0) << error;
    }
    EXPECT_EQ(folder.List().find(".part"), std::string::npos);
    EXPECT_GT(refused, 0U);
}

INSTANTIATE_TEST_SUITE_P(AllKinds, DamagedCompact,
                         testing::Combine(testing::Values("clutter", "Jet3", "Jet4"), testing::ValuesIn(kAllDamages)),
                         [](const auto& damaged) {
                             return std::get<0>(damaged.param) + "_" + DamageName(std::get<1>(damaged.param));
                         });

}  // namespace

}  // namespace ledgix::test
