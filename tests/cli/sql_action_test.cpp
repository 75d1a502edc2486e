#include <gtest/gtest.h>

#include "database_copy.h"

namespace ledgix {
namespace {

using test::DatabaseCopy;

TEST(SqlAction, SaysHowManyRowsItChanged) {
    const DatabaseCopy copy("household-2000.mdb");
    EXPECT_EQ(copy.Run({"sql", "update ProfileProperty set Rates = Rates + 1 where ProfileNumber = 1"}).out,
              "3 rows changed.\n");
    EXPECT_EQ(copy.Exported()["profiles"][0]["properties"][0]["Rates"], 1681);
    EXPECT_EQ(copy.Run({"sql", " \n\tDELETE from Tax_Rates where upper > 0;"}).out, "2 rows changed.\n");
    EXPECT_EQ(copy.Run({"sql", "insert into Tax_Rates (upper, rate) values (50000, 25.5)"}).out, "1 rows changed.\n");
    EXPECT_EQ(copy.Exported()["taxRates"],
              nlohmann::json::parse(R"([{"upper": 0, "rate": 39}, {"upper": 50000, "rate": 25.5}])"));
    EXPECT_TRUE(test::JudgeAgrees(copy.path()));
}

TEST(SqlAction, ThatFindsNoRowChangesNone) {
    const DatabaseCopy copy("household-2000.mdb");
    const std::string before = copy.bytes();
    EXPECT_EQ(copy.Run({"sql", "delete from Profiles where ProfileNumber = 99"}).out, "0 rows changed.\n");
    EXPECT_TRUE(copy.bytes() == before);
}

TEST(SqlAction, GivesJsonAndCsv) {
    const DatabaseCopy copy("household-2000.mdb");
    EXPECT_EQ(copy.Run({"sql", "--format", "json", "update Tax_Rates set rate = 1"}).out, "{\"rowsAffected\": 3}\n");
    EXPECT_EQ(copy.Run({"sql", "--format", "csv", "update Tax_Rates set rate = 2"}).out, "rowsAffected\r\n3\r\n");
}

TEST(SqlAction, ThatFailsLeavesTheFileByteForByte) {
    const DatabaseCopy copy("household-2000.mdb");
    const std::string before = copy.bytes();
    const test::CommandResult duplicate =
        copy.Run({"sql", "update ProfileProperty set PropertyNumber = 2 where ProfileNumber = 1"});
    EXPECT_EQ(duplicate.status, cli::kRuntimeError);
    EXPECT_NE(duplicate.err.find("3022 - "), std::string::npos);
    EXPECT_EQ(copy.Run({"sql", "delete from MSysObjects"}).status, cli::kRuntimeError);
    EXPECT_EQ(copy.Run({"sql", "delete from Nothing"}).status, cli::kRuntimeError);
    EXPECT_EQ(copy.Run({"sql", "insert into"}).status, cli::kRuntimeError);
    EXPECT_TRUE(copy.bytes() == before);
}

TEST(SqlAction, IsToldFromATableByItsVerbAlone) {
    EXPECT_EQ(DatabaseCopy("household-2000.mdb").Run({"sql", "Tax_Rates"}).out,
              "upper  rate\n"
              "-----  ----\n"
              "38000  19.5\n"
              "60000    33\n"
              "    0    39\n");
}

}  // namespace
}  // namespace ledgix
