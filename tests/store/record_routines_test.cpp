#include <gtest/gtest.h>

#include "dao_constants.h"
#include "database.h"
#include "error_of.h"
#include "fixed_clock.h"
#include "household_builder.h"
#include "message_recorder.h"
#include "scoped_environment.h"
#include "temporary_folder.h"

namespace ledgix::store {
namespace {

using runtime::Null;
using runtime::Variant;
using Message = test::MessageRecorder::Message;

const std::string kHousehold = LEDGIX_TEST_DATA "/mdb/household-2000.mdb";

class RecordRoutines : public testing::Test {
protected:
    RecordsetPtr Open(std::string sql) {
        RecordsetPtr rows;
        DataCreateSet(rows, sql, dao::kOpenDynaset, dao::kNoOptions);
        return rows;
    }

    std::string Log() const { return test::Content(folder.File("errNov26.log")); }

    test::TemporaryFolder folder;
    test::ScopedEnvironment app{"LEDGIX_FOLDER", folder.path()};
    test::ScopedEnvironment settings{"LEDGIX_SETTINGS", folder.File("settings.reg")};
    test::FixedClock clock{{2026, 11, 7, 9, 5, 3}};
    test::MessageRecorder messages;
};

class OpenedRecordRoutines : public RecordRoutines {
protected:
    test::InstalledDatabase database{kHousehold};
};

TEST_F(OpenedRecordRoutines, ARecordsetIsWalkedToItsEnd) {
    RecordsetPtr rows = Open("select * from Profiles");
    int count = 0;
    for (; !DataEOF(rows); DataMoveNext(rows))
        ++count;
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(DataIsEmpty(rows));
    DataClose(rows);
    EXPECT_FALSE(rows);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(OpenedRecordRoutines, TheCallersTextIsRewritten) {
    std::string sql = "select * from Profiles where profile_name = 'Marcus O'Leary'";
    RecordsetPtr rows;
    DataCreateSet(rows, sql, dao::kOpenDynaset, dao::kNoOptions);
    EXPECT_EQ(sql, "select * from Profiles where profile_name = 'Marcus O''Leary'");
    EXPECT_FALSE(DataIsEmpty(rows));
}

TEST_F(OpenedRecordRoutines, NothingIsEmptyAndAtItsEnd) {
    EXPECT_TRUE(DataEOF(nullptr));
    EXPECT_TRUE(DataIsEmpty(nullptr));
}

TEST_F(OpenedRecordRoutines, ClosingNothingIsNoError) {
    RecordsetPtr rows;
    DataClose(rows);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(OpenedRecordRoutines, NoRowsAreEmpty) {
    EXPECT_TRUE(DataIsEmpty(Open("select * from Profiles where ProfileNumber = 99")));
}

TEST_F(OpenedRecordRoutines, AnEngineErrorShowsAnEmptyMessageAndALogEntry) {
    RecordsetPtr rows = Open("select * from Profiles");
    const dao::Recordset* before = rows.get();
    std::string sql = "select * from Nothing";
    DataCreateSet(rows, sql, dao::kOpenDynaset, dao::kNoOptions);
    EXPECT_EQ(rows.get(), before);
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"", runtime::kOkOnly, "Vantreo Ledgix"}}));
    EXPECT_EQ(Log(), "07/11/26 09:05:03 \r\n");
}

TEST_F(OpenedRecordRoutines, AnErrorOfTheRewritingIsReportedAndTheStatementNotRun) {
    EXPECT_FALSE(Open("a'bcdef"));
    EXPECT_EQ(messages.messages(),
              (std::vector<Message>{{"General Errors...\r\n\r\n5 - Invalid procedure call or argument\r\n\r\n",
                                     runtime::kOkOnly, "Vantreo Ledgix"}}));
}

TEST_F(OpenedRecordRoutines, FailingTestsAreFalseAndSayItEachTime) {
    RecordsetPtr rows = Open("select * from Profiles");
    rows->Close();
    EXPECT_FALSE(DataEOF(rows));
    EXPECT_FALSE(DataEOF(rows));
    EXPECT_FALSE(DataIsEmpty(rows));
    EXPECT_EQ(messages.messages().size(), 3U);
}

TEST_F(OpenedRecordRoutines, AFailedCloseLeavesTheVariable) {
    RecordsetPtr rows = Open("select * from Profiles");
    rows->Close();
    DataClose(rows);
    EXPECT_TRUE(rows);
    EXPECT_EQ(messages.messages().size(), 1U);
    rows.reset();
}

TEST_F(OpenedRecordRoutines, MovingFromTheEndIsReported) {
    const RecordsetPtr rows = Open("select * from Profiles where ProfileNumber = 99");
    DataMoveNext(rows);
    DataMoveNext(nullptr);
    EXPECT_EQ(messages.messages().size(), 2U);
    EXPECT_EQ(messages.messages()[0].text, "");
    EXPECT_EQ(messages.messages()[1].text.substr(0, 24), "General Errors...\r\n\r\n91 ");
}

TEST_F(RecordRoutines, WithoutADatabaseEveryRoutineFailsByItself) {
    EXPECT_FALSE(Open("select * from Profiles"));
    EXPECT_FALSE(Open("select * from Profiles"));
    EXPECT_EQ(messages.messages().size(), 2U);
}

TEST_F(RecordRoutines, NullBecomesTheDefault) {
    EXPECT_EQ(NullToValue(Null{}, 0.0), Variant(0.0));
    EXPECT_EQ(NullToValue(7, 0.0), Variant(7));
}

TEST_F(RecordRoutines, TheDatabaseBesideTheProgramIsOpened) {
    std::filesystem::copy(kHousehold, folder.File("property.mdb"));
    StartADO();
    ASSERT_TRUE(gDatabase);
    EXPECT_EQ(gDatabase->path(), folder.File("property.mdb"));
    EXPECT_EQ(gWorkspace, &dao::DefaultWorkspace());
    EXPECT_TRUE(messages.messages().empty());
    gDatabase.reset();
}

TEST_F(RecordRoutines, TheFolderAboveWinsWhateverTheCaseOfTheName) {
    const std::string program = folder.MakeFolder("program");
    const test::ScopedEnvironment inner("LEDGIX_FOLDER", program);
    std::filesystem::copy(kHousehold, folder.File("property.mdb"));
    std::filesystem::copy(kHousehold, program + "/property.mdb");
    StartADO();
    ASSERT_TRUE(gDatabase);
    EXPECT_TRUE(std::filesystem::equivalent(gDatabase->path(), folder.File("property.mdb")));
    gDatabase.reset();
}

TEST_F(RecordRoutines, AMissingDatabaseIsReportedAndLeavesNothingOpen) {
    StartADO();
    EXPECT_FALSE(gDatabase);
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"", runtime::kOkOnly, "Vantreo Ledgix"}}));
}

TEST_F(RecordRoutines, AnUnreachableLocationGivesANoticeAndTheLocalFile) {
    folder.Write("settings.reg",
                 "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\r\n\"Networkable\"=\"1\"\r\n"
                 "\"DatabaseLocation\"=\"/no/such/household.mdb\"\r\n");
    std::filesystem::copy(kHousehold, folder.File("property.mdb"));
    StartADO();
    ASSERT_TRUE(gDatabase);
    EXPECT_EQ(messages.messages(),
              (std::vector<Message>{{"Unable to access \r\n/no/such/household.mdb\r\nReverting back to \r\n" +
                                         folder.File("property.mdb"),
                                     runtime::kOkOnly, "Vantreo Ledgix"}}));
    gDatabase.reset();
}

TEST_F(RecordRoutines, ASettingThatIsNoNumberIsReported) {
    folder.Write("settings.reg",
                 "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\r\n\"Networkable\"=\"yes\"\r\n");
    StartADO();
    EXPECT_FALSE(gDatabase);
    EXPECT_EQ(messages.messages()[0].text, "General Errors...\r\n\r\n13 - Type mismatch\r\n\r\n");
}

}  // namespace
}  // namespace ledgix::store
