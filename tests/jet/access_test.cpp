#include "access.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>

#include "new_database.h"
#include "schema_writer.h"
#include "temporary_folder.h"
#include "written_database.h"

namespace ledgix::test {

namespace {

using jet::DatabaseFile;
using jet::OpenMode;
using jet::ReadAccess;
using jet::TableLock;
using jet::TableUse;
using jet::Transaction;

constexpr int kReadOnly = 3027;
constexpr int kLocked = 3260;
constexpr int kTableInUse = 3262;
constexpr std::chrono::milliseconds kShort{20};
constexpr runtime::Date kSomeDay{45000};

// Two openers of one file, as two programs have it.
class Access : public testing::TestWithParam<jet::Generation> {
protected:
    Access() {
        const auto content = jet::NewDatabase(GetParam(), kSomeDay);
        path_ = folder_.Write("shared.mdb", {reinterpret_cast<const char*>(content.data()), content.size()});
        one_ = Open(OpenMode::kReadWrite);
        two_ = Open(OpenMode::kReadWrite);
        Transaction change(*one_);
        jet::CreateTable(*one_, "T", {{.name = "Id"}});
        change.Commit();
    }
    ~Access() override {
        EXPECT_EQ(Faults(*one_), "");
        EXPECT_EQ(folder_.List(), "shared.mdb");
    }

    std::unique_ptr<DatabaseFile> Open(OpenMode mode) {
        auto file = std::make_unique<DatabaseFile>(path_, mode);
        file->SetPatience(kShort);
        return file;
    }
    static jet::TableDefinition Table(DatabaseFile& file) {
        return file.ReadTableDefinition(file.FindTable("T").value().DefinitionPage());
    }
    static void Insert(DatabaseFile& file, int number) {
        Transaction change(file);
        jet::TableWriter(file, Table(file)).Insert({number});
        change.Commit();
    }
    static std::uint32_t Rows(DatabaseFile& file) {
        const ReadAccess access(file);
        return Table(file).row_count;
    }
    static int ErrorReading(DatabaseFile& file) {
        return ErrorOf([&] { ReadAccess access(file); });
    }
    static int ErrorWriting(DatabaseFile& file) {
        return ErrorOf([&] { Transaction change(file); });
    }
    static int ErrorLocking(DatabaseFile& file, TableUse use, std::string_view table = "T") {
        return ErrorOf([&] { TableLock lock(file, table, use); });
    }

    TemporaryFolder folder_;
    std::string path_;
    std::unique_ptr<DatabaseFile> one_;
    std::unique_ptr<DatabaseFile> two_;
};

TEST_P(Access, LetsSeveralRead) {
    const ReadAccess first(*one_);
    const ReadAccess second(*two_);
    EXPECT_EQ(Table(*one_).row_count, 0U);
    EXPECT_EQ(Table(*two_).row_count, 0U);
}

TEST_P(Access, KeepsWritersOutWhileAnotherOneReads) {
    std::optional<ReadAccess> reading(std::in_place, *one_);
    EXPECT_EQ(ErrorWriting(*two_), kLocked);
    EXPECT_EQ(ErrorReading(*two_), 0) << "who gave up waiting is in nobody's way";
    reading.reset();
    EXPECT_EQ(ErrorWriting(*two_), 0);
}

TEST_P(Access, KeepsOthersOutWhileOneWrites) {
    std::optional<Transaction> writing(std::in_place, *one_);
    EXPECT_EQ(ErrorReading(*two_), kLocked);
    EXPECT_EQ(ErrorWriting(*two_), kLocked);
    writing.reset();
    EXPECT_EQ(ErrorReading(*two_), 0);
    EXPECT_EQ(ErrorWriting(*two_), 0);
}

TEST_P(Access, WaitsForAnotherOneToFinish) {
    two_->SetPatience(std::chrono::seconds(20));
    std::optional<Transaction> writing(std::in_place, *one_);
    int error = -1;
    std::thread other([&] { error = ErrorWriting(*two_); });
    std::this_thread::sleep_for(kShort);
    writing.reset();
    other.join();
    EXPECT_EQ(error, 0);
}

TEST_P(Access, ShowsWhatAnotherOneChanged) {
    EXPECT_EQ(Rows(*two_), 0U);
    const std::uint64_t before = two_->change_count();
    for (int i = 1; i <= 40; ++i) {
        DatabaseFile& writer = i % 2 == 0 ? *one_ : *two_;
        DatabaseFile& reader = i % 2 == 0 ? *two_ : *one_;
        Insert(writer, i);
        ASSERT_EQ(Rows(reader), static_cast<std::uint32_t>(i));
    }
    EXPECT_GT(two_->change_count(), before);
}

TEST_P(Access, CountsNoChangeWhereThereIsNone) {
    EXPECT_EQ(Rows(*two_), 0U);
    const std::uint64_t before = two_->change_count();
    EXPECT_EQ(Rows(*two_), 0U);
    EXPECT_EQ(Rows(*one_), 0U);
    EXPECT_EQ(two_->change_count(), before);
}

TEST_P(Access, Nests) {
    {
        const ReadAccess outer(*one_);
        { const ReadAccess inner(*one_); }
        EXPECT_EQ(ErrorWriting(*two_), kLocked) << "the outer one still reads";
    }
    EXPECT_EQ(ErrorWriting(*two_), 0);
    {
        Transaction writing(*one_);
        { const ReadAccess inner(*one_); }
        EXPECT_EQ(ErrorReading(*two_), kLocked) << "the transaction goes on";
    }
    EXPECT_EQ(ErrorReading(*two_), 0);
}

TEST_P(Access, WritesWhatTheOutermostTransactionCommits) {
    {
        Transaction outer(*one_);
        Insert(*one_, 1);
        {
            Transaction inner(*one_);
            jet::TableWriter(*one_, Table(*one_)).Insert({2});
        }
        Insert(*one_, 3);
        EXPECT_EQ(Table(*one_).row_count, 2U);
        EXPECT_EQ(ErrorReading(*two_), kLocked);
        outer.Commit();
    }
    EXPECT_EQ(Rows(*two_), 2U);
    {
        Transaction outer(*one_);
        Insert(*one_, 4);
    }
    EXPECT_EQ(Rows(*one_), 2U);
    EXPECT_EQ(Rows(*two_), 2U);
}

TEST_P(Access, LeavesAFileThatNobodyChangedAsItIs) {
    const std::string before = Content(path_);
    const auto time = std::filesystem::last_write_time(path_);
    {
        Transaction change(*one_);
        change.Commit();
    }
    EXPECT_EQ(Content(path_), before);
    EXPECT_EQ(std::filesystem::last_write_time(path_), time);
}

TEST_P(Access, OfOneWhoMayJustReadRefusesToWrite) {
    const auto reader = Open(OpenMode::kRead);
    EXPECT_EQ(ErrorWriting(*reader), kReadOnly);
    Insert(*one_, 1);
    EXPECT_EQ(Rows(*reader), 1U);
    const ReadAccess reading(*reader);
    EXPECT_EQ(ErrorWriting(*one_), kLocked);
}

TEST_P(Access, DeniedToOthersKeepsThemFromATable) {
    {
        const TableLock deny(*one_, "T", TableUse::kDenyWrite);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite), kTableInUse);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite, "t"), kTableInUse) << "in any case";
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kDenyWrite), kTableInUse);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kRead), 0);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite, "Other"), 0);
    }
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite), 0);
    {
        const TableLock deny(*one_, "T", TableUse::kDenyRead);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kRead), kTableInUse);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite), 0);
    }
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kRead), 0);
}

TEST_P(Access, CannotBeDeniedWhileAnotherOneHasIt) {
    std::optional<TableLock> use(std::in_place, *two_, "T", TableUse::kWrite);
    EXPECT_EQ(ErrorLocking(*one_, TableUse::kDenyWrite), kTableInUse);
    EXPECT_EQ(ErrorLocking(*one_, TableUse::kDenyRead), 0);
    EXPECT_EQ(ErrorLocking(*one_, TableUse::kWrite), 0);
    use.reset();
    EXPECT_EQ(ErrorLocking(*one_, TableUse::kDenyWrite), 0);
}

TEST_P(Access, IsNeverDeniedByTheSameOpener) {
    std::optional<TableLock> write(std::in_place, *one_, "T", TableUse::kWrite);
    std::optional<TableLock> deny(std::in_place, *one_, "T", TableUse::kDenyWrite);
    std::optional<TableLock> again(std::in_place, *one_, "T", TableUse::kDenyWrite);
    EXPECT_EQ(ErrorLocking(*one_, TableUse::kWrite), 0);
    deny.reset();
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite), kTableInUse) << "one of two is left";
    again.reset();
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kWrite), 0);
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kDenyWrite), kTableInUse) << "the first one still writes";
    write.reset();
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kDenyWrite), 0);
}

TEST_P(Access, ThatWasRefusedLeavesNoLockBehind) {
    {
        const TableLock use(*two_, "T", TableUse::kWrite);
        EXPECT_EQ(ErrorLocking(*one_, TableUse::kDenyWrite), kTableInUse);
    }
    EXPECT_EQ(ErrorLocking(*two_, TableUse::kDenyWrite), 0);
    {
        const TableLock write(*one_, "T", TableUse::kWrite);
        const TableLock other(*two_, "T", TableUse::kWrite);
        EXPECT_EQ(ErrorLocking(*one_, TableUse::kDenyWrite), kTableInUse);
        EXPECT_EQ(ErrorLocking(*two_, TableUse::kDenyWrite), kTableInUse) << "the first one still writes";
    }
}

TEST_P(Access, EndsWithItsOpener) {
    auto third = Open(OpenMode::kReadWrite);
    {
        std::optional<Transaction> writing(std::in_place, *third);
        EXPECT_EQ(ErrorReading(*one_), kLocked);
    }
    third.reset();
    EXPECT_EQ(ErrorReading(*one_), 0);
}

TEST_P(Access, UndoesWhatAnInterruptedWriterLeft) {
    Insert(*one_, 1);
    const std::string before = Content(path_);
    {
        const auto raw = jet::DiskFileSystem().Open(path_, OpenMode::kReadWrite);
        const std::size_t page_size = jet::FormatOf(GetParam()).page_size;
        const jet::PagePtr zeros = std::make_shared<jet::Page>(jet::Page{3, std::vector<std::uint8_t>(page_size)});
        const jet::PagePtr more = std::make_shared<jet::Page>(
            jet::Page{static_cast<jet::PageNumber>(before.size() / page_size), zeros->bytes});
        jet::RollbackJournal(jet::DiskFileSystem(), path_).Write(*raw, more->number, {zeros, more});
        raw->Write(3 * page_size, zeros->bytes);
    }
    EXPECT_EQ(Rows(*two_), 1U) << "a reader that may write undoes it";
    EXPECT_EQ(Content(path_), before);
}

INSTANTIATE_TEST_SUITE_P(BothGenerations, Access, kBothGenerations, GenerationName);

}  // namespace

}  // namespace ledgix::test
