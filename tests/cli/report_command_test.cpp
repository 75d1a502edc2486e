#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli_run.h"
#include "household_builder.h"
#include "report_folder.h"
#include "scoped_region.h"

namespace ledgix {
namespace {

using test::Json;
using test::RunOn;

class ReportCommand : public testing::Test {
protected:
    test::ReportFolder folder;
    test::ScopedRegion region;
};

TEST_F(ReportCommand, PrintsTheBandsAsJson) {
    const test::CommandResult result =
        RunOn("household-2000.mdb", {"report", "profile", "--profile", "1", "--format", "json"});
    ASSERT_EQ(result.status, cli::kDone) << result.err;
    const Json report = Json::parse(result.out);
    EXPECT_EQ(report["report"], "profile");
    EXPECT_EQ(report["bands"][0]["band"], "Header");
    EXPECT_EQ(report["bands"][0]["fields"]["Profile"], "Profile : Hannah and Tom Whitaker");
    EXPECT_EQ(report["bands"][2]["fields"]["before"], "$60,005.50");
    EXPECT_FALSE(report["bands"][2]["fields"].contains("after"));
}

TEST_F(ReportCommand, ChoosesByExactNameToo) {
    const test::CommandResult by_number =
        RunOn("household-2000.mdb", {"report", "analysis", "--profile", "4", "--property", "3"});
    const test::CommandResult by_name = RunOn("household-2000.mdb", {"report", "analysis", "--profile", "Joana Brandão",
                                                                     "--property", "Corner shop, 2 True Street"});
    EXPECT_EQ(by_number.status, cli::kDone) << by_number.err;
    EXPECT_EQ(by_number.out, by_name.out);
    EXPECT_NE(by_number.out.find("Property : Corner shop, 2 True Street"), std::string::npos);
}

TEST_F(ReportCommand, TellsARecordThatIsMissing) {
    const test::CommandResult profile = RunOn("household-2000.mdb", {"report", "profile", "--profile", "3"});
    EXPECT_EQ(profile.status, cli::kRuntimeError);
    EXPECT_NE(profile.err.find("There is no profile '3'."), std::string::npos);
    const test::CommandResult property =
        RunOn("household-2000.mdb", {"report", "outlook", "--profile", "4", "--property", "2"});
    EXPECT_EQ(property.status, cli::kRuntimeError);
    EXPECT_NE(property.err.find("There is no property '2'."), std::string::npos);
}

TEST_F(ReportCommand, RefusesANameThatSeveralRecordsBear) {
    const std::vector<std::uint8_t> content = test::HouseholdBuilder()
                                                  .AddProfile(1, {{"ProfileName", "Twin"}})
                                                  .AddProfile(2, {{"ProfileName", "Twin"}})
                                                  .Finish();
    const test::TemporaryFolder files;
    const std::string file = files.Write("twins.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
    const test::CommandResult result = test::RunCli({"--database", file, "report", "profile", "--profile", "Twin"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("More than one profile is named 'Twin'"), std::string::npos);
}

TEST_F(ReportCommand, NamesTheColumnsThatAnOlderLayoutLacks) {
    const test::CommandResult result = RunOn("household-older.mdb", {"report", "profile", "--profile", "1"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("needs an upgrade"), std::string::npos);
    EXPECT_NE(result.err.find("missing: column Profiles.IncDividends"), std::string::npos);
    EXPECT_NE(result.err.find("missing: column Profiles.last_modified"), std::string::npos);
    EXPECT_EQ(result.err.find("ProfileProperty"), std::string::npos);
}

TEST_F(ReportCommand, OfAPropertyNamesTheColumnsOfItsTableToo) {
    const test::CommandResult result =
        RunOn("household-older.mdb", {"report", "outlook", "--profile", "1", "--property", "1"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_NE(result.err.find("ProfileProperty.PriceIncreases"), std::string::npos);
}

TEST_F(ReportCommand, OnAFileWithoutTablesNamesThem) {
    const test::CommandResult result = RunOn("household-empty.mdb", {"report", "profile", "--profile", "1"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_NE(result.err.find("missing: table Profiles"), std::string::npos);
}

TEST_F(ReportCommand, TakesANullSalaryForNothing) {
    const test::CommandResult result = RunOn("household-nulls.mdb", {"report", "profile", "--profile", "2"});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_NE(result.out.find("Tax on your salary/wages was calculated at 0"), std::string::npos);
}

TEST_F(ReportCommand, RefusesAPropertyThatCouldNotBeLoaded) {
    const test::CommandResult result =
        RunOn("household-nulls.mdb", {"report", "analysis", "--profile", "1", "--property", "2"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("clsProfile-LoadProperties: 94 - Invalid use of Null"), std::string::npos);
}

TEST_F(ReportCommand, PrintsAPropertyThatWasLoadedBeforeTheFault) {
    const test::CommandResult result =
        RunOn("household-nulls.mdb", {"report", "analysis", "--profile", "1", "--property", "1"});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_NE(result.out.find("14 Harbour Terrace"), std::string::npos);
}

TEST_F(ReportCommand, TellsATemplateThatIsMissing) {
    std::filesystem::remove(folder.path() + "/profile.rdn");
    const test::CommandResult result = RunOn("household-2000.mdb", {"report", "profile", "--profile", "1"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("profile.rdn"), std::string::npos);
}

TEST_F(ReportCommand, WritesToAFile) {
    const std::string file = folder.path() + "/report.csv";
    const test::CommandResult result = RunOn("household-2000.mdb", {"report", "outlook", "--profile", "1", "--property",
                                                                    "1", "--format", "csv", "--output", file});
    EXPECT_EQ(result.status, cli::kDone) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(test::Content(file).find("Body,Purchase Price,-265000,"), std::string::npos);
}

TEST_F(ReportCommand, ErrorsOfTheCalculationAreShownByTheReportWriter) {
    const std::vector<std::uint8_t> content =
        test::HouseholdBuilder().AddProfile(1, {}).AddProperty(1, 1, {{"MortgageTerm", 2731}}).Finish();
    const test::TemporaryFolder files;
    const std::string file = files.Write("term.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
    const test::CommandResult result =
        test::RunCli({"--database", file, "report", "analysis", "--profile", "1", "--property", "1"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("clsGroup.PrintReport: 6 - Overflow"), std::string::npos);
}

}  // namespace
}  // namespace ledgix
