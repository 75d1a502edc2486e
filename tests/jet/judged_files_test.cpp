#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "database_file.h"
#include "index_check.h"
#include "jet_test.h"
#include "mdbtools_judge.h"
#include "sample_database.h"
#include "table_rows.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

using jet::CatalogEntry;
using jet::DatabaseFile;

// The rows without the columns that mdbtools 1.0 has no text for: those of type 17, opaque ones of an internal table of
// Access. It leaves them out of every row; we give their bytes.
std::vector<NamedRow> RowsForTheJudge(DatabaseFile& file, const jet::TableDefinition& table) {
    std::vector<NamedRow> rows = ReadRows(file, table);
    for (std::size_t i = table.columns.size(); i-- > 0;) {
        if (table.columns[i].type != jet::ColumnType::kOpaque17)
            continue;
        for (NamedRow& row : rows)
            row.erase(row.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return rows;
}

struct Figures {
    std::size_t tables = 0;
    std::size_t rows = 0;
};

struct IndexFigures {
    std::size_t indexes = 0;
    std::size_t entries = 0;
    std::size_t skipped = 0;  // text that has no computable key
};

// Computes the keys of every index of every table anew.
IndexFigures CheckIndexes(const std::string& path) {
    IndexFigures figures;
    DatabaseFile file(jet::OpenPageFile(path));
    for (const CatalogEntry& entry : file.ReadCatalog()) {
        if (!entry.IsTable())
            continue;
        const jet::TableDefinition table = file.ReadTableDefinition(entry.DefinitionPage());
        for (const jet::Index& index : table.indexes) {
            const IndexCheck check = CheckIndex(file, table, index);
            EXPECT_EQ(check.difference, "") << path << " " << entry.name << " " << index.name;
            ++(check.has_unknown_characters ? figures.skipped : figures.indexes);
            figures.entries += check.has_unknown_characters ? 0 : check.entries;
        }
    }
    return figures;
}

// Compares the tables that the judge lists with ours.
Figures CompareTables(const std::string& path, bool with_system_tables) {
    Figures figures;
    DatabaseFile file(jet::OpenPageFile(path));
    const std::vector<CatalogEntry> catalog = file.ReadCatalog();
    for (const std::string& name : JudgeTables(path, with_system_tables)) {
        const CatalogEntry* entry = jet::FindTable(catalog, name);
        EXPECT_NE(entry, nullptr) << name;
        if (entry == nullptr)
            continue;
        const jet::TableDefinition table = file.ReadTableDefinition(entry->DefinitionPage());
        const std::vector<NamedRow> rows = RowsForTheJudge(file, table);
        EXPECT_TRUE(SameRows(JudgeRows(path, name), rows)) << path << " " << name;
        ++figures.tables;
        figures.rows += rows.size();
    }
    return figures;
}

std::vector<std::string> OurTables(const std::string& path) {
    std::vector<std::string> names;
    for (const CatalogEntry& entry : DatabaseFile(jet::OpenPageFile(path)).ReadCatalog()) {
        if (entry.IsUserTable())
            names.push_back(entry.name);
    }
    return names;
}

class JudgedFile : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        if (!HaveMdbtools())
            GTEST_SKIP() << "mdbtools is not installed";
    }
};

TEST_P(JudgedFile, HasTheUserTablesThatMdbtoolsLists) {
    EXPECT_EQ(OurTables(GetParam()), JudgeTables(GetParam(), false));
}

TEST_P(JudgedFile, HasTheRowsThatMdbtoolsReadsInEveryTable) {
    const Figures figures = CompareTables(GetParam(), true);
    EXPECT_GE(figures.tables, 4U);
    EXPECT_GT(figures.rows, 0U);
}

TEST_P(JudgedFile, HasTheIndexEntriesThatItsRowsGive) {
    const IndexFigures figures = CheckIndexes(GetParam());
    EXPECT_GE(figures.indexes, 7U);
    EXPECT_GT(figures.entries, 50U);
}

INSTANTIATE_TEST_SUITE_P(Samples, JudgedFile, testing::ValuesIn(SampleFiles()), FileTestName);

class JudgedSample : public testing::TestWithParam<jet::Generation> {};

TEST_P(JudgedSample, OfOurOwnMakingHasTheRowsThatMdbtoolsReads) {
    if (!HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    const TemporaryFolder folder;
    const std::vector<std::uint8_t> content = BuildSampleDatabase(GetParam());
    const std::string path =
        folder.Write("sample.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
    EXPECT_EQ(OurTables(path), JudgeTables(path, false));
    const Figures figures = CompareTables(path, true);
    EXPECT_EQ(figures.tables, 13U);
    EXPECT_EQ(figures.rows, 158U);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, JudgedSample, kBothGenerations, GenerationName);

TEST(ForeignFiles, HaveTheRowsThatMdbtoolsReadsAndTheIndexEntriesThatTheseGive) {
    const char* folder = std::getenv("LEDGIX_FOREIGN_FILES");
    if (folder == nullptr)
        GTEST_SKIP() << "LEDGIX_FOREIGN_FILES names no folder of .mdb files to compare";
    if (!HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    Figures sum;
    IndexFigures index_sum;
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".mdb")
            continue;
        const Figures figures = CompareTables(entry.path().string(), true);
        ++files;
        sum.tables += figures.tables;
        sum.rows += figures.rows;
        const IndexFigures index_figures = CheckIndexes(entry.path().string());
        index_sum.indexes += index_figures.indexes;
        index_sum.entries += index_figures.entries;
        index_sum.skipped += index_figures.skipped;
    }
    EXPECT_GT(files, 0U) << folder << " holds no .mdb file";
    std::cout << files << " files, " << sum.tables << " tables, " << sum.rows << " rows compared; " << index_sum.indexes
              << " indexes with " << index_sum.entries << " entries recomputed, " << index_sum.skipped << " not\n";
}

}  // namespace

}  // namespace ledgix::test
