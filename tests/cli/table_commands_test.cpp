#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cases.h"
#include "cli_run.h"
#include "mdbtools_judge.h"

namespace ledgix {
namespace {

using test::Json;
using test::RunOn;

TEST(ListCommand, ShowsNumbersAndNames) {
    EXPECT_EQ(RunOn("household-2000.mdb", {"list"}).out,
              "    1  Hannah and Tom Whitaker\n"
              "           1  14 Harbour Terrace\n"
              "           2  Unit 3, 88 Kowhai Road\n"
              "           3  The old bakery\n"
              "    2  Marcus O'Leary\n"
              "           1  7B Station Lane\n"
              "           2  Mum's place\n"
              "    4  Joana Brandão\n"
              "           1  Flat 12, Maré Alta\n"
              "           3  Corner shop, 2 True Street\n");
}

TEST(ListCommand, GivesJson) {
    const Json list = Json::parse(RunOn("household-2000.mdb", {"list", "--format", "json"}).out);
    ASSERT_EQ(list["profiles"].size(), 3U);
    EXPECT_EQ(list["profiles"][2]["ProfileNumber"], 4);
    EXPECT_EQ(list["profiles"][2]["profile_name"], "Joana Brandão");
    EXPECT_EQ(list["profiles"][2]["properties"][1]["PropertyNumber"], 3);
    EXPECT_EQ(list["profiles"][2]["properties"][1]["PropertyName"], "Corner shop, 2 True Street");
}

TEST(ListCommand, WorksOnOlderLayoutsAndOnNulls) {
    const std::string whole = RunOn("household-2000.mdb", {"list"}).out;
    EXPECT_EQ(RunOn("household-older.mdb", {"list"}).out, whole);
    EXPECT_EQ(RunOn("household-nulls.mdb", {"list"}).out, whole);
    EXPECT_EQ(RunOn("household-clutter.mdb", {"list"}).out, whole);
}

TEST(ListCommand, OnAFileWithoutTablesSaysThatItNeedsAnUpgrade) {
    const test::CommandResult result = RunOn("household-empty.mdb", {"list"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_NE(result.err.find("missing: table Profiles"), std::string::npos);
}

TEST(SqlCommand, PrintsATable) {
    EXPECT_EQ(RunOn("household-2000.mdb", {"sql", "select upper, rate from tax_rates order by upper"}).out,
              "upper  rate\n"
              "-----  ----\n"
              "    0    39\n"
              "38000  19.5\n"
              "60000    33\n");
}

TEST(SqlCommand, GivesCsv) {
    EXPECT_EQ(RunOn("household-2000.mdb", {"sql", "--format", "csv",
                                           "select PropertyName, InterestOnly, MortgageRate from ProfileProperty where "
                                           "ProfileNumber = 1 and PropertyNumber = 2"})
                  .out,
              "PropertyName,InterestOnly,MortgageRate\r\n"
              "\"Unit 3, 88 Kowhai Road\",True,6.85\r\n");
}

TEST(SqlCommand, GivesJson) {
    const Json rows = Json::parse(
        RunOn("household-nulls.mdb", {"sql", "--format", "json",
                                      "select ProfileNumber, IncSalary, last_modified from Profiles order by "
                                      "ProfileNumber"})
            .out);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0]["last_modified"], "2026-02-14T20:15:30");
    EXPECT_TRUE(rows[1]["IncSalary"].is_null());
}

TEST(SqlCommand, GivesTheEnginesErrors) {
    const test::CommandResult table = RunOn("household-2000.mdb", {"sql", "select * from Nothing"});
    EXPECT_EQ(table.status, cli::kRuntimeError);
    EXPECT_NE(table.err.find("3078 - "), std::string::npos);
    const test::CommandResult action = RunOn("household-2000.mdb", {"sql", "select from Profiles"});
    EXPECT_EQ(action.status, cli::kRuntimeError);
}

TEST(InfoCommand, NamesEveryTableOfAFileThatServesOtherEndsToo) {
    const std::string info = RunOn("household-clutter.mdb", {"info"}).out;
    EXPECT_NE(info.find("Format     Jet 4\n"), std::string::npos);
    EXPECT_NE(info.find("Code page  1252\n"), std::string::npos);
    const std::vector<std::string> tables = test::JudgeTables(LEDGIX_TEST_DATA "/mdb/household-clutter.mdb", false);
    EXPECT_GT(tables.size(), 3U);
    for (const std::string& table : tables)
        EXPECT_NE(info.find("\nTable " + table), std::string::npos) << table;
    EXPECT_NE(info.find("(linked from another file)"), std::string::npos);
}

TEST(InfoCommand, DescribesColumnsIndexesAndRows) {
    const std::string info = RunOn("household-2000.mdb", {"info"}).out;
    EXPECT_NE(info.find("Table ProfileProperty\n  rows: 7\n"), std::string::npos);
    EXPECT_NE(info.find("  column PropertyName: Text 50\n"), std::string::npos);
    EXPECT_NE(info.find("  column MortgageRate: Single\n"), std::string::npos);
    EXPECT_NE(info.find("  index PrimaryKey: ProfileNumber, PropertyNumber (primary, unique, required)\n"),
              std::string::npos);
}

TEST(InfoCommand, DescribesSystemTablesWhenAsked) {
    EXPECT_EQ(RunOn("household-2000.mdb", {"info"}).out.find("MSysObjects"), std::string::npos);
    EXPECT_NE(RunOn("household-2000.mdb", {"info", "--system"}).out.find("Table MSysObjects (system)"),
              std::string::npos);
}

TEST(InfoCommand, GivesJson) {
    const Json info = Json::parse(RunOn("household-clutter.mdb", {"info", "--format", "json"}).out);
    EXPECT_EQ(info["format"], "Jet 4");
    EXPECT_EQ(info["tables"].size(), 8U);
    for (const Json& table : info["tables"])
        EXPECT_TRUE(table["kind"] == "linked" || table["rows"].is_number()) << table;
}

}  // namespace
}  // namespace ledgix
