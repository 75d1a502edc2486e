#include <gtest/gtest.h>

#include "database_copy.h"
#include "jet_format.h"
#include "page_file.h"
#include "pager.h"
#include "rollback_journal.h"

namespace ledgix {
namespace {

using test::DatabaseCopy;

// The sample with a data page of a table that says it is another table's.
DatabaseCopy Damaged() {
    std::string content = test::Content(LEDGIX_TEST_DATA "/mdb/household-2000.mdb");
    constexpr std::size_t kPageSize = 4096;
    constexpr std::size_t kOwner = 4;
    for (std::size_t page = 2; page < content.size() / kPageSize; ++page) {
        char* start = content.data() + page * kPageSize;
        if (start[0] == 1 && start[kOwner] > 5) {
            ++start[kOwner];
            break;
        }
    }
    return DatabaseCopy::Of(content);
}

TEST(CheckCommand, FindsNothingInASoundFile) {
    const DatabaseCopy copy("household-clutter.mdb");
    const std::string before = copy.bytes();
    const test::CommandResult result = copy.Run({"check"});
    EXPECT_EQ(result.status, cli::kDone);
    EXPECT_EQ(result.out, "No faults found.\n");
    EXPECT_EQ(copy.Run({"check", "--format", "json"}).out, "[]\n");
    EXPECT_TRUE(copy.bytes() == before);
}

TEST(CheckCommand, FindsNothingStrictlyInFilesOfOurOwn) {
    for (const char* format : {"jet3", "jet4"}) {
        const test::CommandResult result = DatabaseCopy::Of(test::NewHousehold(format)).Run({"check", "--strict"});
        EXPECT_EQ(result.status, cli::kDone);
        EXPECT_EQ(result.out, "No faults found.\n") << format;
    }
}

TEST(CheckCommand, WithFindingsHasFailed) {
    const DatabaseCopy copy = Damaged();
    const test::CommandResult result = copy.Run({"check"});
    EXPECT_EQ(result.status, cli::kRuntimeError);
    EXPECT_NE(result.out.find("page "), std::string::npos);
    const nlohmann::json findings = nlohmann::json::parse(copy.Run({"check", "--format", "json"}).out);
    ASSERT_FALSE(findings.empty());
    EXPECT_TRUE(findings[0]["code"].is_string());
    EXPECT_NE(result.out.find(findings[0]["text"].get<std::string>()), std::string::npos);
}

TEST(CheckCommand, UndoesAnInterruptedChangeFirst) {
    const DatabaseCopy copy("household-2000.mdb");
    const std::string before = copy.bytes();
    constexpr std::size_t kPageSize = 4096;
    {
        const auto file = jet::DiskFileSystem().Open(copy.path(), jet::OpenMode::kReadWrite);
        jet::RollbackJournal journal(jet::DiskFileSystem(), copy.path());
        const jet::Page changed{.number = jet::kCatalogPage, .bytes = std::vector<std::uint8_t>(kPageSize)};
        journal.Write(*file, static_cast<jet::PageNumber>(before.size() / kPageSize),
                      {std::make_shared<const jet::Page>(changed)});
        file->Write(jet::kCatalogPage * kPageSize, std::span(changed.bytes).first(16));
    }
    ASSERT_FALSE(copy.bytes() == before);
    EXPECT_EQ(copy.Run({"check"}).out, "No faults found.\n");
    EXPECT_TRUE(copy.bytes() == before);
}

TEST(CheckCommand, OfAFileThatCannotBeOpenedGivesItsStatus) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(test::RunCli({"--database", folder.File("none.mdb"), "check"}).status, cli::kFileNotUsable);
    EXPECT_EQ(test::RunCli({"--database", folder.Write("a.mdb", "no database"), "check"}).status, cli::kFileNotUsable);
}

TEST(CheckCommand, WithoutADatabaseChecksTheProgramsOwn) {
    const DatabaseCopy application("household-2000.mdb");
    application.folder().Write("property.mdb", application.bytes());
    EXPECT_EQ(test::RunCli({"check"}).out, "No faults found.\n");
}

}  // namespace
}  // namespace ledgix
