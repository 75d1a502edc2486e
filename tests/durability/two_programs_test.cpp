#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "child_process.h"
#include "database_file.h"
#include "error_of.h"
#include "pets.h"
#include "recordset.h"
#include "temporary_folder.h"
#include "workspace.h"

namespace ledgix::test {

namespace {

constexpr int kRowsOfEach = 1000;

// Two programs that insert rows into a table at the same time.
class TwoPrograms : public testing::TestWithParam<dao::FileFormat> {
protected:
    TwoPrograms() {
        dao::CreateDatabase(path_, GetParam());
        dao::TableDef things{"Things", {}, {}, 0};
        things.fields.Append({"Number", dao::kLong, 0, 0});
        things.fields.Append({"Name", dao::kText, 100, 0});
        dao::Index key{"PrimaryKey", {{"Number"}}};
        key.primary = true;
        things.indexes.Append(key);
        dao::DefaultWorkspace().OpenDatabase(path_)->CreateTable(things);
    }

    std::vector<std::string> Inserting(int first) const {
        return {"insert", path_, std::to_string(first), std::to_string(kRowsOfEach)};
    }

    void ExpectAllRows() const {
        const auto database = dao::DefaultWorkspace().OpenDatabase(path_);
        const auto rows = database->OpenRecordset("select Number from Things order by Number");
        EXPECT_EQ(rows->RecordCount(), 2U * kRowsOfEach);
        for (int number = 1; !rows->Eof(); rows->MoveNext())
            EXPECT_EQ((*rows)["Number"], runtime::Variant(number++));
        jet::DatabaseFile file(path_, jet::OpenMode::kReadWrite);
        EXPECT_EQ(Findings(file), "");
    }

    TemporaryFolder folder_;
    std::string path_ = folder_.File("shared.mdb");
};

TEST_P(TwoPrograms, LongRunOfInsertingSideBySideLosesNoRow) {
#ifdef _WIN32
    GTEST_SKIP() << "needs child processes";
#endif
    ChildProcess first(Inserting(1));
    ChildProcess second(Inserting(1 + kRowsOfEach));
    EXPECT_EQ(first.Wait(), 0);
    EXPECT_EQ(second.Wait(), 0);
    ExpectAllRows();
}

TEST_P(TwoPrograms, LongRunOfInsertingIsOnlyEverSeenToGrowByAReader) {
#ifdef _WIN32
    GTEST_SKIP() << "needs child processes";
#endif
    ChildProcess reader({"watch", path_, std::to_string(2 * kRowsOfEach)});
    ChildProcess first(Inserting(1));
    ChildProcess second(Inserting(1 + kRowsOfEach));
    ASSERT_EQ(first.Wait(), 0);
    ASSERT_EQ(second.Wait(), 0);
    EXPECT_EQ(reader.Wait(), 0);
    ExpectAllRows();
}

TEST_P(TwoPrograms, LetEachOtherInHoweverMuchOneOfThemWrites) {
#ifdef _WIN32
    GTEST_SKIP() << "needs child processes";
#endif
    constexpr std::chrono::milliseconds kUntilItWritesAgain{40};
    ChildProcess busy({"hold", path_});
    ASSERT_TRUE(busy.ReadLine());
    const auto database = dao::DefaultWorkspace().OpenDatabase(path_);
    for (std::size_t row = 1; row <= 3; ++row) {
        std::this_thread::sleep_for(kUntilItWritesAgain);
        EXPECT_EQ(
            ErrorOf([&] { database->Execute("insert into Things (Number) values (" + std::to_string(row) + ")"); }), 0);
        std::this_thread::sleep_for(kUntilItWritesAgain);
        EXPECT_EQ(ErrorOf([&] { EXPECT_EQ(database->CountRows("Things"), row); }), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, TwoPrograms, testing::Values(dao::FileFormat::kJet3, dao::FileFormat::kJet4),
                         [](const auto& param) { return param.param == dao::FileFormat::kJet3 ? "Jet3" : "Jet4"; });

}  // namespace

}  // namespace ledgix::test
