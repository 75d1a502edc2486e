#include "schema.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "household_builder.h"
#include "workspace.h"

namespace ledgix::store {
namespace {

using Missing = std::vector<std::string>;

std::unique_ptr<dao::Database> Open(const std::string& file) {
    return dao::DefaultWorkspace().OpenDatabase(LEDGIX_TEST_DATA "/mdb/" + file);
}

class SchemaCase : public testing::TestWithParam<test::Json> {};

TEST_P(SchemaCase, IsTheLayoutOfTheTable) {
    const std::string name = GetParam().at("table");
    const SchemaTable& table = name == "Profiles"          ? ProfilesTable()
                               : name == "ProfileProperty" ? ProfilePropertyTable()
                                                           : TaxRatesTable();
    EXPECT_EQ(table.name, name);
    ASSERT_EQ(table.columns.size(), GetParam().at("columns").size());
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const test::Json& column = GetParam().at("columns").at(i);
        EXPECT_EQ(table.columns[i].name, column.at("name").get<std::string>());
        EXPECT_EQ(table.columns[i].type, column.at("type").get<int>()) << table.columns[i].name;
        const bool sized = table.columns[i].type == dao::kText;  // the sizes of other types are fixed
        EXPECT_EQ(sized ? table.columns[i].size : 0, column.at("size").get<int>()) << table.columns[i].name;
        EXPECT_EQ(table.columns[i].fill_default, column.at("fill").get<std::string>()) << table.columns[i].name;
    }
    const std::vector<std::string> key(table.primary_key.begin(), table.primary_key.end());
    const test::Json& expected_key = GetParam().at("primaryKey");
    EXPECT_EQ(test::Json(key), expected_key.is_null() ? test::Json::array() : expected_key);
}

INSTANTIATE_TEST_SUITE_P(Schema, SchemaCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("schema.json").at("tables"))),
                         [](const auto& param) { return param.param.at("table").template get<std::string>(); });

TEST(Schema, NothingIsMissingFromTheCurrentLayout) {
    const auto database = Open("household-2000.mdb");
    for (const SchemaTable* table : {&ProfilesTable(), &ProfilePropertyTable(), &TaxRatesTable()})
        EXPECT_EQ(MissingFrom(*database, *table), Missing());
}

TEST(Schema, MissingColumnsAreNamed) {
    const auto database = Open("household-older.mdb");
    EXPECT_EQ(MissingFrom(*database, ProfilesTable()),
              (Missing{"column Profiles.IncDividends", "column Profiles.last_modified"}));
    EXPECT_EQ(MissingFrom(*database, ProfilePropertyTable()),
              (Missing{"column ProfileProperty.PriceIncreases", "column ProfileProperty.ExpFees",
                       "column ProfileProperty.expRepair"}));
    EXPECT_EQ(MissingFrom(*database, TaxRatesTable()), Missing());
}

TEST(Schema, AMissingTableIsNamed) {
    EXPECT_EQ(MissingFrom(*Open("household-empty.mdb"), TaxRatesTable()), Missing{"table Tax_Rates"});
}

}  // namespace
}  // namespace ledgix::store
