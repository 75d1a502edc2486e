#include "catalog.h"

#include <gtest/gtest.h>

#include "database_builder.h"
#include "jet_test.h"

namespace ledgix::test {

namespace {

using jet::CatalogEntry;

class Catalog : public testing::TestWithParam<jet::Generation> {
protected:
    DatabaseBuilder builder_{GetParam()};
};

TEST_P(Catalog, ListsContainersAndTablesOfAFreshFile) {
    jet::DatabaseFile file = builder_.Open();
    const std::vector<CatalogEntry> catalog = file.ReadCatalog();
    ASSERT_EQ(catalog.size(), 8U);
    EXPECT_EQ(catalog[0].name, "Tables");
    EXPECT_EQ(catalog[0].id, 0x0F000001);
    EXPECT_EQ(catalog[0].parent_id, 0x0F000000);
    EXPECT_EQ(catalog[0].type, jet::kContainerEntry);
    EXPECT_EQ(catalog[0].flags, 0x80000000U);
    EXPECT_FALSE(catalog[0].IsTable());
    EXPECT_EQ(catalog[4].name, "MSysObjects");
    EXPECT_EQ(catalog[4].DefinitionPage(), 2U);
    EXPECT_TRUE(catalog[4].IsSystemTable());
    EXPECT_FALSE(catalog[4].IsUserTable());
}

TEST_P(Catalog, TellsUserTablesByTypeAndFlags) {
    builder_.AddTable("Mine", {{.name = "Id"}});
    builder_.AddEntry(900, jet::kTablesContainer, "Made by Access", jet::kTableEntry, 2);
    builder_.AddEntry(901, jet::kTablesContainer, "Hidden system", jet::kTableEntry, 0x0A);
    builder_.AddEntry(902, jet::kTablesContainer, "Hidden", jet::kTableEntry, 8);
    builder_.AddEntry(903, jet::kTablesContainer, "A query", jet::kQueryEntry, 0);
    builder_.AddEntry(904, jet::kTablesContainer, "A document", -32768, 0);
    jet::DatabaseFile file = builder_.Open();
    std::string names;
    for (const CatalogEntry& entry : file.ReadCatalog())
        names += entry.IsUserTable() ? entry.name + "," : "";
    EXPECT_EQ(names, "Mine,Hidden,");
}

TEST_P(Catalog, TellsWhereLinkedTablesAre) {
    builder_.AddEntry(900, jet::kTablesContainer, "Budget", jet::kLinkedTableEntry, 0, "C:\\old\\budget.mdb", "Plan");
    builder_.AddEntry(901, jet::kTablesContainer, "Server", jet::kLinkedOdbcEntry, 0);
    jet::DatabaseFile file = builder_.Open();
    const std::vector<CatalogEntry> catalog = file.ReadCatalog();
    const CatalogEntry* budget = jet::FindTable(catalog, "budget");
    ASSERT_NE(budget, nullptr);
    EXPECT_TRUE(budget->IsLinkedTable());
    EXPECT_FALSE(budget->IsTable());
    EXPECT_EQ(budget->database, "C:\\old\\budget.mdb");
    EXPECT_EQ(budget->foreign_name, "Plan");
    EXPECT_EQ(budget->connect, "");
    EXPECT_TRUE(jet::FindTable(catalog, "Server")->IsLinkedTable());
}

TEST_P(Catalog, FindsTablesByNameInAnyCase) {
    const jet::PageNumber page = builder_.AddTable("Ausgaben f\u00FCr M\u00C4rz", {{.name = "Id"}}).page();
    jet::DatabaseFile file = builder_.Open();
    const auto found = file.FindTable("AUSGABEN F\u00DCR m\u00E4rz");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->DefinitionPage(), page);
    EXPECT_FALSE(file.FindTable("Ausgaben"));
    EXPECT_FALSE(file.FindTable("Tables")) << "a container is no table";
}

TEST_P(Catalog, WithoutItsColumnsIsDamaged) {
    const jet::Format& format = builder_.file().format();
    builder_.Finish();
    const std::size_t record = format.definition.statistics;
    builder_.file().page(jet::kCatalogPage)[record + format.column.type] =
        static_cast<std::uint8_t>(jet::ColumnType::kSingle);
    jet::DatabaseFile file(jet::MakeMemoryFile(builder_.file().Finish()));
    EXPECT_EQ(ErrorOf([&] { file.ReadCatalog(); }), kDamaged);
}

TEST_P(Catalog, EntryMayNameAPageWithoutADefinition) {
    builder_.AddEntry(1, jet::kTablesContainer, "Wrong", jet::kTableEntry, 0);
    builder_.AddEntry(-5, jet::kTablesContainer, "Beyond", jet::kTableEntry, 0);
    jet::DatabaseFile file = builder_.Open();
    for (const char* name : {"Wrong", "Beyond"}) {
        const jet::PageNumber page = file.FindTable(name).value().DefinitionPage();
        EXPECT_EQ(ErrorOf([&] { file.ReadTableDefinition(page); }), kDamaged) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Catalog, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
