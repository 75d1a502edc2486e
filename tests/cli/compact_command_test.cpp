#include <gtest/gtest.h>

#include <filesystem>

#include "database_copy.h"

namespace ledgix {
namespace {

using test::DatabaseCopy;
using test::Household;

TEST(CompactCommand, MakesASmallerFileWithTheSameTables) {
    const DatabaseCopy copy("household-clutter.mdb");
    const std::string before = copy.bytes();
    const std::string output = copy.folder().File("compacted.mdb");
    const test::CommandResult result = copy.Run({"compact", output});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_EQ(result.out, "Copied: tables 7, rows 116.\n");
    EXPECT_LT(test::Content(output).size(), before.size());
    EXPECT_TRUE(copy.bytes() == before);
    EXPECT_TRUE(test::JudgeAgrees(output));
    EXPECT_EQ(test::JudgeTables(output, false), test::JudgeTables(copy.path(), false));
    EXPECT_EQ(nlohmann::json::parse(test::RunCli({"--database", output, "export"}).out), Household());
    EXPECT_EQ(test::RunCli({"--database", output, "check", "--strict"}).out, "No faults found.\n");
}

TEST(CompactCommand, SaysWhatItLeftBehind) {
    const DatabaseCopy copy("household-clutter.mdb");
    EXPECT_EQ(copy.Run({"compact", copy.folder().File("compacted.mdb")}).err,
              "Not copied: relationships, 1\n"
              "Not copied: linked tables, 1\n"
              "Not copied: system tables, 5\n"
              "Not copied: other objects, 3\n");
}

TEST(CompactCommand, KeepsTheGenerationAndLeavesNothingElseBehindInOurOwnFiles) {
    for (const std::string format : {"jet3", "jet4"}) {
        const DatabaseCopy copy = DatabaseCopy::Of(test::NewHousehold(format));
        const std::string output = copy.folder().File("compacted.mdb");
        const test::CommandResult result = copy.Run({"compact", output});
        EXPECT_EQ(result.out, "Copied: tables 3, rows 3.\n");
        EXPECT_EQ(result.err, "");
        EXPECT_NE(test::RunCli({"--database", output, "info"}).out.find(format == "jet3" ? "Jet 3\n" : "Jet 4\n"),
                  std::string::npos);
        EXPECT_EQ(test::RunCli({"--database", output, "upgrade"}).out, "The database is up to date.\n");
    }
}

TEST(CompactCommand, LeavesAnExistingFileAlone) {
    const DatabaseCopy copy("household-2000.mdb");
    const std::string output = copy.folder().Write("precious.mdb", "precious");
    const test::CommandResult result = copy.Run({"compact", output});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("3204 - "), std::string::npos);
    EXPECT_EQ(test::Content(output), "precious");
    EXPECT_EQ(copy.Run({"compact", copy.path()}).status, cli::kRuntimeError);
}

TEST(CompactCommand, TellsAFolderThatIsMissing) {
    const DatabaseCopy copy("household-2000.mdb");
    const test::CommandResult result = copy.Run({"compact", copy.folder().File("none/compacted.mdb")});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.err.find("57 - "), std::string::npos);
    EXPECT_EQ(copy.folder().List(), "copy.mdb");
}

TEST(CompactCommand, OfAFileThatCannotBeUsedGivesItsStatus) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(test::RunCli({"--database", folder.File("none.mdb"), "compact", folder.File("new.mdb")}).status,
              cli::kFileNotUsable);
    EXPECT_EQ(folder.List(), "");
}

}  // namespace
}  // namespace ledgix
