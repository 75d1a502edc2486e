#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "mdbtools_judge.h"
#include "memory_disk.h"
#include "new_database.h"
#include "process.h"
#include "random_table.h"
#include "table_scan.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

constexpr char kPath[] = "everything.mdb";
constexpr std::size_t kOperations = 100000;
constexpr std::size_t kOperationsOnDisk = 10000;
constexpr std::size_t kBetweenChecks = 1000;
constexpr runtime::Date kSomeDay{45000};

// That of the variable LEDGIX_SEED, if it is set.
std::uint32_t Seed() {
    const char* wanted = std::getenv("LEDGIX_SEED");
    const auto seed = wanted != nullptr
                          ? static_cast<std::uint32_t>(std::strtoul(wanted, nullptr, 10))
                          : static_cast<std::uint32_t>(testing::UnitTest::GetInstance()->random_seed()) + 1;
    std::cout << "seed " << seed << "\n";
    return seed;
}

std::string NewFileIn(const TemporaryFolder& folder, jet::Generation generation) {
    const std::vector<std::uint8_t> content = jet::NewDatabase(generation, kSomeDay);
    return folder.Write(kPath, {reinterpret_cast<const char*>(content.data()), content.size()});
}

std::vector<NamedRow> RowsOf(jet::DatabaseFile& file, const jet::CatalogEntry& entry) {
    const jet::TableDefinition table = file.ReadTableDefinition(entry.DefinitionPage());
    std::vector<NamedRow> rows;
    for (jet::TableScan scan(file, table); scan.Next();) {
        NamedRow& row = rows.emplace_back();
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            row.emplace_back(table.columns[i].name, scan.Value(i));
    }
    return rows;
}

// "name: type" of each column, as mdb-schema lists them.
std::vector<std::string> JudgeColumns(const std::string& path) {
    std::istringstream lines(OutputOfSuccess("mdb-schema --table Everything '" + path + "'"));
    std::vector<std::string> columns;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("\t[", 0) != 0)
            continue;
        const std::size_t name_end = line.find(']');
        std::string type = line.substr(line.find_first_not_of('\t', name_end + 1));
        columns.push_back(line.substr(2, name_end - 2) + ": " + type.substr(0, type.find_first_of(" ,(/")));
    }
    return columns;
}

std::vector<std::string> ColumnsOf(const ModelRows& model) {
    const std::map<jet::ColumnType, std::string> types{{jet::ColumnType::kBoolean, "Boolean"},
                                                       {jet::ColumnType::kInt16, "Integer"},
                                                       {jet::ColumnType::kInt32, "Long"},
                                                       {jet::ColumnType::kDouble, "Double"},
                                                       {jet::ColumnType::kCurrency, "Currency"},
                                                       {jet::ColumnType::kDate, "DateTime"},
                                                       {jet::ColumnType::kText, "Text"},
                                                       {jet::ColumnType::kMemo, "Memo"},
                                                       {jet::ColumnType::kOle, "OLE"}};
    std::vector<std::string> columns;
    for (const ModelColumn& column : model.columns())
        columns.push_back(column.name + ": " + types.at(column.type));
    return columns;
}

class Model : public testing::TestWithParam<jet::Generation> {};

TEST_P(Model, HoldsWhatAHundredThousandChangesOfTheTableMade) {
    MemoryDisk disk;
    disk.Put(kPath, jet::NewDatabase(GetParam(), kSomeDay));
    RandomTable table(disk, kPath, Seed());
    for (std::size_t done = 0; done < kOperations; done += kBetweenChecks) {
        table.Change(kBetweenChecks);
        ASSERT_EQ(table.Differences(), "") << "after " << done + kBetweenChecks;
    }
    EXPECT_GT(table.counts().inserted, kOperations / 10);
    EXPECT_GT(table.counts().updated, kOperations / 10);
    EXPECT_GT(table.counts().deleted, kOperations / 10);
    EXPECT_GT(table.counts().refused, kOperations / 100);
    EXPECT_GT(table.counts().columns, 5U);
    EXPECT_GT(table.counts().indexes, 3U);
}

TEST_P(Model, HoldsWhatChangesOfAFileOnTheDiskMade) {
    const TemporaryFolder folder;
    RandomTable table(jet::DiskFileSystem(), NewFileIn(folder, GetParam()), Seed());
    for (std::size_t done = 0; done < kOperationsOnDisk; done += kBetweenChecks) {
        table.Change(kBetweenChecks);
        ASSERT_EQ(table.Differences(), "") << "after " << done + kBetweenChecks;
    }
    EXPECT_EQ(folder.List(), kPath);
}

TEST_P(Model, IsReadByMdbtoolsAsByUs) {
    if (!HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    const TemporaryFolder folder;
    const std::string path = NewFileIn(folder, GetParam());
    RandomTable table(jet::DiskFileSystem(), path, Seed());
    table.Change(kOperationsOnDisk);
    ASSERT_EQ(table.Differences(), "");
    std::vector<std::string> tables;
    for (const jet::CatalogEntry& entry : table.file().ReadCatalog()) {
        if (entry.IsTable()) {
            tables.push_back(entry.name);
            EXPECT_TRUE(SameRows(JudgeRows(path, entry.name), RowsOf(table.file(), entry))) << entry.name;
        }
    }
    std::sort(tables.begin(), tables.end());
    std::vector<std::string> theirs = JudgeTables(path, true);
    std::sort(theirs.begin(), theirs.end());
    EXPECT_EQ(theirs, tables);
    EXPECT_EQ(JudgeTables(path, false), std::vector<std::string>{"Everything"});
    EXPECT_EQ(JudgeColumns(path), ColumnsOf(table.model()));
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Model, testing::Values(jet::Generation::kJet3, jet::Generation::kJet4),
                         [](const auto& param) { return param.param == jet::Generation::kJet3 ? "Jet3" : "Jet4"; });

}  // namespace

}  // namespace ledgix::test
