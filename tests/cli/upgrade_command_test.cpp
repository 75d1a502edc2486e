#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "database_copy.h"

namespace ledgix {
namespace {

using test::DatabaseCopy;
using test::Household;
using test::NewHousehold;
using Json = nlohmann::json;

const std::vector<std::string> kSamples{"household-2000.mdb", "household-older.mdb", "household-nulls.mdb",
                                        "household-empty.mdb", "household-clutter.mdb"};

std::string SampleName(const testing::TestParamInfo<std::string>& sample) {
    std::string name = sample.param.substr(0, sample.param.find('.'));
    name.erase(0, name.find('-') + 1);
    return name;
}

class UpgradeOfSample : public testing::TestWithParam<std::string> {};

TEST_P(UpgradeOfSample, IsDoneAndLeavesASoundFile) {
    const DatabaseCopy copy(GetParam());
    const test::CommandResult result = copy.Run({"upgrade"});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(copy.Run({"check"}).out, "No faults found.\n");
    EXPECT_TRUE(test::JudgeAgrees(copy.path()));
}

TEST_P(UpgradeOfSample, LeavesTheFileByteForByteTheSecondTime) {
    const DatabaseCopy copy(GetParam());
    copy.Run({"upgrade"});
    const std::string once = copy.bytes();
    const test::CommandResult again = copy.Run({"upgrade"});
    EXPECT_EQ(again.status, cli::kDone);
    EXPECT_EQ(again.out, "The database is up to date.\n");
    EXPECT_TRUE(copy.bytes() == once);
}

INSTANTIATE_TEST_SUITE_P(Samples, UpgradeOfSample, testing::ValuesIn(kSamples), SampleName);

class UpgradeOfCurrentLayout : public testing::TestWithParam<std::string> {};

TEST_P(UpgradeOfCurrentLayout, LeavesTheFileByteForByte) {
    const DatabaseCopy copy(GetParam());
    const std::string before = copy.bytes();
    EXPECT_EQ(copy.Run({"upgrade"}).out, "The database is up to date.\n");
    EXPECT_TRUE(copy.bytes() == before);
}

INSTANTIATE_TEST_SUITE_P(Samples, UpgradeOfCurrentLayout,
                         testing::Values("household-2000.mdb", "household-nulls.mdb", "household-clutter.mdb"),
                         SampleName);

TEST(UpgradeCommand, SaysWhatItAddedToAnOlderLayout) {
    EXPECT_EQ(DatabaseCopy("household-older.mdb").Run({"upgrade"}).out,
              "Added: column Profiles.IncDividends\n"
              "Added: column Profiles.last_modified\n"
              "Added: column ProfileProperty.PriceIncreases\n"
              "Added: column ProfileProperty.ExpFees\n"
              "Added: column ProfileProperty.expRepair\n");
}

TEST(UpgradeCommand, FillsAddedColumnsAndKeepsTheOthers) {
    const DatabaseCopy copy("household-older.mdb");
    Json expected = copy.Exported();
    for (Json& profile : expected["profiles"]) {
        profile["IncDividends"] = 0;
        profile["last_modified"] = "1900-01-01T00:00:00";
        for (Json& property : profile["properties"]) {
            property["PriceIncreases"] = 3.5;
            property["ExpFees"] = 0;
            property["expRepair"] = 0;
        }
    }
    ASSERT_EQ(copy.Run({"upgrade"}).status, cli::kDone);
    EXPECT_EQ(copy.Exported(), expected);
}

TEST(UpgradeCommand, KeepsNullsInColumnsThatAreThere) {
    const DatabaseCopy copy("household-nulls.mdb");
    const Json before = copy.Exported();
    copy.Run({"upgrade"});
    EXPECT_EQ(copy.Exported(), before);
}

TEST(UpgradeCommand, MakesTheTablesOfAnEmptyFileAndFillsInTheDefaultBrackets) {
    const DatabaseCopy copy("household-empty.mdb");
    EXPECT_EQ(copy.Run({"upgrade"}).out,
              "Added: table Profiles\nAdded: table ProfileProperty\nAdded: table Tax_Rates\n"
              "Added: 3 tax brackets\n");
    EXPECT_EQ(copy.Exported(), Json::parse(R"({"profiles": [], "taxRates": [{"upper": 38000, "rate": 19.5},
                                              {"upper": 60000, "rate": 33}, {"upper": 0, "rate": 39}]})"));
    const std::string info = copy.Run({"info"}).out;
    EXPECT_NE(info.find("index PrimaryKey: ProfileNumber (primary, unique, required)"), std::string::npos);
    EXPECT_NE(info.find("index PrimaryKey: ProfileNumber, PropertyNumber (primary, unique, required)"),
              std::string::npos);
}

TEST(UpgradeCommand, LeavesBracketsThatAreThere) {
    const DatabaseCopy copy("household-2000.mdb");
    copy.Run({"sql", "delete from Tax_Rates where upper <> 0"});
    EXPECT_EQ(copy.Run({"upgrade"}).out, "The database is up to date.\n");
    EXPECT_EQ(copy.Exported()["taxRates"], Json::parse(R"([{"upper": 0, "rate": 39}])"));
}

TEST(UpgradeCommand, FillsAnEmptyTableOfBracketsAndTouchesNoOtherTable) {
    const DatabaseCopy copy("household-clutter.mdb");
    std::map<std::string, std::vector<Json>> before;
    for (const std::string& table : test::JudgeTables(copy.path(), false))
        before[table] = test::JudgeRows(copy.path(), table);
    ASSERT_GE(before.size(), 7U);
    copy.Run({"sql", "delete from Tax_Rates"});
    EXPECT_EQ(copy.Run({"upgrade"}).out, "Added: 3 tax brackets\n");
    for (const auto& [table, rows] : before)
        EXPECT_EQ(test::JudgeRows(copy.path(), table), rows) << table;
}

TEST(UpgradeCommand, LeavesTheTablesOfOtherProgramsAsTheyAre) {
    const DatabaseCopy copy("household-clutter.mdb");
    const std::vector<std::string> foreign{"Notes", "Trades People", "Scratch", "Parts"};
    std::map<std::string, std::vector<Json>> before;
    for (const std::string& table : foreign)
        before[table] = test::JudgeRows(copy.path(), table);
    ASSERT_EQ(copy.Run({"sql", "delete from Profiles"}).status, cli::kDone);
    ASSERT_EQ(copy.Run({"import", LEDGIX_TEST_DATA "/mdb/household.json"}).status, cli::kDone);
    ASSERT_EQ(copy.Run({"upgrade"}).status, cli::kDone);
    for (const std::string& table : foreign)
        EXPECT_EQ(test::JudgeRows(copy.path(), table), before[table]) << table;
    EXPECT_EQ(copy.Exported(), Household());
}

TEST(UpgradeCommand, MakesTheSameLayoutInBothGenerations) {
    const DatabaseCopy jet3 = DatabaseCopy::Of(NewHousehold("jet3"));
    const DatabaseCopy jet4 = DatabaseCopy::Of(NewHousehold("jet4"));
    const auto tables = [](const DatabaseCopy& copy) {
        const std::string info = copy.Run({"info"}).out;
        return info.substr(info.find("Tables "));
    };
    EXPECT_EQ(tables(jet3), tables(jet4));
    EXPECT_TRUE(test::JudgeAgrees(jet3.path()));
    EXPECT_TRUE(test::JudgeAgrees(jet4.path()));
}

TEST(UpgradeCommand, FailsWhenTheKeyCannotBeMadeAndSaysWhatIsMissing) {
    const DatabaseCopy copy("household-empty.mdb");
    {
        const auto database = dao::DefaultWorkspace().OpenDatabase(copy.path());
        dao::TableDef profiles;
        profiles.name = "Profiles";
        profiles.fields.Append({.name = "ProfileNumber", .type = dao::kLong});
        database->CreateTable(profiles);
        database->Execute("insert into Profiles (ProfileNumber) values (7)");
        database->Execute("insert into Profiles (ProfileNumber) values (7)");
    }
    const test::CommandResult result = copy.Run({"upgrade"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("The database was not updated successfully."), std::string::npos);
    EXPECT_NE(result.err.find("Still missing: primary key of Profiles\n"), std::string::npos);
    EXPECT_NE(result.out.find("Added: column Profiles.profile_name\n"), std::string::npos);
    EXPECT_NE(result.out.find("Added: table ProfileProperty\n"), std::string::npos);
}

TEST(UpgradeCommand, OfAFileThatCannotBeUsedGivesItsStatus) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(test::RunCli({"--database", folder.File("none.mdb"), "upgrade"}).status, cli::kFileNotUsable);
    const std::string text = folder.Write("text.mdb", "no database");
    EXPECT_EQ(test::RunCli({"--database", text, "upgrade"}).status, cli::kFileNotUsable);
    EXPECT_EQ(test::Content(text), "no database");
}

}  // namespace
}  // namespace ledgix
