#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "household_builder.h"
#include "temporary_folder.h"

namespace ledgix {
namespace {

using test::Json;
using test::RunOn;

Json Household() {
    std::ifstream in(LEDGIX_TEST_DATA "/mdb/household.json");
    return Json::parse(in);
}

Json Exported(const std::string& file) {
    const test::CommandResult result = RunOn(file, {"export"});
    EXPECT_EQ(result.status, cli::kDone) << result.err;
    return Json::parse(result.out);
}

TEST(Export, OfTheWholeHouseholdEqualsItsContent) {
    EXPECT_EQ(Exported("household-2000.mdb"), Household());
}

TEST(Export, LeavesOutWhatElseIsInTheFile) {
    EXPECT_EQ(Exported("household-clutter.mdb"), Household());
}

TEST(Export, OfAFileWithoutTablesIsEmpty) {
    EXPECT_EQ(Exported("household-empty.mdb"), Json::parse(R"({"profiles": [], "taxRates": []})"));
}

TEST(Export, GivesNullForNull) {
    Json expected = Household();
    expected["profiles"][1]["IncSalary"] = nullptr;
    expected["profiles"][0]["properties"][1]["OtherCosts"] = nullptr;
    EXPECT_EQ(Exported("household-nulls.mdb"), expected);
}

TEST(Export, OfAnOlderLayoutLeavesOutTheMissingColumns) {
    Json expected = Household();
    for (Json& profile : expected["profiles"]) {
        for (const char* missing : {"IncDividends", "last_modified"})
            profile.erase(missing);
        for (const char* null : {"ExpHP", "IncOtherIncome", "AssOther", "LibOther"})
            profile[null] = nullptr;
        for (Json& property : profile["properties"])
            for (const char* missing : {"PriceIncreases", "ExpFees", "expRepair"})
                property.erase(missing);
    }
    EXPECT_EQ(Exported("household-older.mdb"), expected);
}

TEST(Export, KeepsTheOrderOfTheColumns) {
    const std::string text = RunOn("household-2000.mdb", {"export"}).out;
    EXPECT_LT(text.find("\"ProfileNumber\""), text.find("\"profile_name\""));
    EXPECT_LT(text.find("\"LibOther\""), text.find("\"last_modified\""));
    EXPECT_LT(text.find("\"PriceIncreases\""), text.find("\"expRepair\""));
}

TEST(Export, WritesSinglesInTheirOwnShortestForm) {
    EXPECT_NE(RunOn("household-2000.mdb", {"export"}).out.find("\"MortgageRate\": 6.85,"), std::string::npos);
}

TEST(Export, LeavesOutPropertiesWithoutAProfileAndSaysSo) {
    const test::TemporaryFolder folder;
    const std::vector<std::uint8_t> content =
        test::HouseholdBuilder().AddProfile(1, {}).AddProperty(1, 1, {}).AddProperty(9, 1, {}).Finish();
    const std::string file =
        folder.Write("orphan.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
    const test::CommandResult result = test::RunCli({"--database", file, "export"});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_EQ(Json::parse(result.out)["profiles"][0]["properties"].size(), 1U);
    EXPECT_EQ(result.err, "Rows of ProfileProperty that belong to no profile were left out: 1\n");
}

TEST(Export, WritesToAFile) {
    const test::TemporaryFolder folder;
    const test::CommandResult result =
        RunOn("household-2000.mdb", {"export", "--output", folder.File("household.json")});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Json::parse(test::Content(folder.File("household.json"))), Household());
}

TEST(Export, ThatCannotBeWrittenLeavesNoHalfFile) {
    const test::TemporaryFolder folder;
    const test::CommandResult result =
        RunOn("household-2000.mdb", {"export", "--output", folder.File("no such folder/household.json")});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("cannot be written"), std::string::npos);
    EXPECT_EQ(folder.List(), "");
}

}  // namespace
}  // namespace ledgix
