#include <gtest/gtest.h>

#include "cli_run.h"
#include "mdbtools_judge.h"
#include "temporary_folder.h"

namespace ledgix {
namespace {

class CreateCommand : public testing::TestWithParam<std::string> {
protected:
    test::TemporaryFolder folder;
    std::string file = folder.File("new.mdb");
};

TEST_P(CreateCommand, MakesAFileWithoutTables) {
    ASSERT_EQ(test::RunCli({"create", file, "--format", GetParam()}).status, cli::kDone);
    const std::string info = test::RunCli({"--database", file, "info"}).out;
    EXPECT_NE(info.find(GetParam() == "jet3" ? "Format     Jet 3\n" : "Format     Jet 4\n"), std::string::npos);
    EXPECT_NE(info.find("Tables     0\n"), std::string::npos);
    EXPECT_EQ(test::RunCli({"--database", file, "export"}).status, cli::kDone);
}

TEST_P(CreateCommand, MakesAFileThatMdbtoolsReads) {
    ASSERT_EQ(test::RunCli({"create", file, "--format", GetParam()}).status, cli::kDone);
    EXPECT_TRUE(test::JudgeTables(file, false).empty());
    const std::vector<std::string> tables = test::JudgeTables(file, true);
    EXPECT_EQ(tables, (std::vector<std::string>{"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}));
}

TEST_P(CreateCommand, LeavesAnExistingFileAlone) {
    folder.Write("new.mdb", "precious");
    const test::CommandResult result = test::RunCli({"create", file, "--format", GetParam()});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("3204 - "), std::string::npos);
    EXPECT_EQ(test::Content(file), "precious");
}

INSTANTIATE_TEST_SUITE_P(Format, CreateCommand, testing::Values("jet3", "jet4"),
                         [](const auto& format) { return format.param; });

TEST(CreateCommandLine, MakesJet4UnlessToldOtherwise) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(test::RunCli({"create", folder.File("new.mdb")}).status, cli::kDone);
    EXPECT_NE(test::RunCli({"--database", folder.File("new.mdb"), "info"}).out.find("Jet 4"), std::string::npos);
}

TEST(CreateCommandLine, TellsAFolderThatIsMissing) {
    const test::TemporaryFolder folder;
    const test::CommandResult result = test::RunCli({"create", folder.File("none/new.mdb")});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_EQ(folder.List(), "");
}

}  // namespace
}  // namespace ledgix
