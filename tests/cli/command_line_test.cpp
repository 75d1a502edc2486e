#include "command_line.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cases.h"
#include "cli_run.h"
#include "process.h"
#include "report_folder.h"
#include "scoped_environment.h"
#include "temporary_folder.h"

namespace ledgix {
namespace {

using test::Json;
using test::RunCli;
using test::RunOn;

TEST(CommandLine, HelpIsDone) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{{"--help"},
                                                                                           {"list", "--help"},
                                                                                           {"report", "--help"},
                                                                                           {"export", "--help"},
                                                                                           {"sql", "--help"},
                                                                                           {"info", "--help"},
                                                                                           {"import", "--help"},
                                                                                           {"upgrade", "--help"},
                                                                                           {"check", "--help"},
                                                                                           {"compact", "--help"}}) {
        const test::CommandResult result = RunCli(arguments);
        EXPECT_EQ(result.status, cli::kDone);
        EXPECT_NE(result.out.find("Usage: ledgix-cli"), std::string::npos) << arguments.front();
    }
}

TEST(CommandLine, ThatMakesNoSenseIsAUsageError) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"nonsense"},
                                               {"list", "--format", "pdf"},
                                               {"report", "--profile", "1"},
                                               {"report", "yearly", "--profile", "1"},
                                               {"report", "profile"},
                                               {"report", "analysis", "--profile", "1"},
                                               {"report", "profile", "--profile", "1", "--property", "1"},
                                               {"import"},
                                               {"compact"},
                                               {"upgrade", "--format", "json"},
                                               {"check", "--format", "csv"},
                                               {"sql"}}) {
        const test::CommandResult result = RunCli(arguments);
        EXPECT_EQ(result.status, cli::kUsageError) << Json(arguments).dump();
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
}

TEST(CommandLine, TheDatabaseMayBeNamedBehindTheCommand) {
    const test::CommandResult result = RunCli({"list", "--database", LEDGIX_TEST_DATA "/mdb/household-2000.mdb"});
    EXPECT_EQ(result.status, cli::kDone) << result.err;
}

TEST(CommandLine, WithoutADatabaseTheProgramsOwnIsUsed) {
    const test::TemporaryFolder folder;
    const test::ScopedEnvironment app("LEDGIX_FOLDER", folder.path());
    const test::ScopedEnvironment settings("LEDGIX_SETTINGS", folder.File("none.reg"));
    std::filesystem::copy(LEDGIX_TEST_DATA "/mdb/household-2000.mdb", folder.File("Property.MDB"));
    EXPECT_EQ(RunCli({"list"}).status, cli::kDone);
}

TEST(CommandLine, WithoutAnyDatabaseTheFileIsNotUsable) {
    const test::TemporaryFolder folder;
    const test::ScopedEnvironment app("LEDGIX_FOLDER", folder.path());
    const test::ScopedEnvironment settings("LEDGIX_SETTINGS", folder.File("none.reg"));
    const test::CommandResult result = RunCli({"list"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_NE(result.err.find("3024 - "), std::string::npos);
}

TEST(CommandLine, AFileThatIsNoDatabaseIsNotUsable) {
    const test::CommandResult result = RunOn("household.json", {"list"});
    EXPECT_EQ(result.status, cli::kFileNotUsable);
    EXPECT_NE(result.err.find("3343 - "), std::string::npos);
}

TEST(CommandLine, ACutOffFileIsNotUsable) {
    const test::TemporaryFolder folder;
    const std::string whole = test::Content(LEDGIX_TEST_DATA "/mdb/household-2000.mdb");
    const std::string file = folder.Write("cut.mdb", std::string_view(whole).substr(0, 5 * 4096));
    for (const char* command : {"list", "export", "info"})
        EXPECT_EQ(RunCli({"--database", file, command}).status, cli::kFileNotUsable) << command;
}

TEST(CommandLine, ReadingLeavesTheFileAsItIs) {
    const test::ReportFolder folder;
    const std::string file = folder.path() + "/household.mdb";
    std::filesystem::copy(LEDGIX_TEST_DATA "/mdb/household-2000.mdb", file);
    std::filesystem::permissions(file, std::filesystem::perms::owner_read);
    const std::string before = test::Content(file);
    const auto written = std::filesystem::last_write_time(file);
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"list"},
                                               {"info"},
                                               {"export"},
                                               {"sql", "select * from Profiles"},
                                               {"report", "profile", "--profile", "1"}}) {
        std::vector<std::string> arguments{"--database", file};
        arguments.insert(arguments.end(), command.begin(), command.end());
        const test::CommandResult result = RunCli(arguments);
        EXPECT_EQ(result.status, cli::kDone) << result.err;
    }
    EXPECT_EQ(test::Content(file), before);
    EXPECT_EQ(std::filesystem::last_write_time(file), written);
    EXPECT_FALSE(std::filesystem::exists(folder.path() + "/household.ldb"));
}

TEST(CommandLine, TheProgramItselfNeedsNoQt) {
    const std::string libraries = test::Output("ldd '" LEDGIX_CLI "'");
    EXPECT_NE(libraries.find("libc.so"), std::string::npos) << libraries;
    EXPECT_EQ(libraries.find("Qt"), std::string::npos) << libraries;
}

TEST(CommandLine, TheProgramGivesItsExitStatus) {
    EXPECT_EQ(test::ExitStatus("'" LEDGIX_CLI "' --version"), cli::kDone);
    EXPECT_EQ(test::ExitStatus("'" LEDGIX_CLI "' --nonsense"), cli::kUsageError);
    EXPECT_EQ(test::ExitStatus("'" LEDGIX_CLI "' --database /no/such.mdb list"), cli::kFileNotUsable);
}

}  // namespace
}  // namespace ledgix
