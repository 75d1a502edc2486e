#include <gtest/gtest.h>

#include "database.h"
#include "fixed_clock.h"
#include "household_file.h"

namespace ledgix::store {
namespace {

using runtime::Variant;
using Message = test::MessageRecorder::Message;
using Values = std::vector<Variant>;

class ExecutedSql : public testing::Test {
protected:
    ExecutedSql() { file.Open(); }

    void Execute(std::string sql) { ExecuteSQL(sql); }
    std::string Log() const { return test::Content(file.folder().File("errNov26.log")); }

    test::FixedClock clock{{2026, 11, 7, 9, 5, 3}};
    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::MessageRecorder messages;
    test::DiagnosisRecorder diagnoses;
};

TEST_F(ExecutedSql, ChangesTheFile) {
    Execute("update Profiles set IncSalary = 12 where ProfileNumber = 1");
    EXPECT_EQ(file.Column("select IncSalary from Profiles where ProfileNumber = 1"), Values{12.0});
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(ExecutedSql, RewritesTheCallersText) {
    std::string sql = "update Profiles set IncSalary = 12 where profile_name = 'Marcus O'Leary'";
    EXPECT_TRUE(ExecuteSQL(sql));
    EXPECT_EQ(sql, "update Profiles set IncSalary = 12 where profile_name = 'Marcus O''Leary'");
    EXPECT_EQ(file.Column("select ProfileNumber from Profiles where IncSalary = 12"), Values{2});
}

TEST_F(ExecutedSql, TakesTheWordsTrueAndFalseForNumbers) {
    Execute("update ProfileProperty set InterestOnly = true");
    for (const Variant& interest_only : file.Column("select InterestOnly from ProfileProperty"))
        EXPECT_EQ(interest_only, Variant(true));
}

TEST_F(ExecutedSql, DeletesNothingWhereNothingMatches) {
    const std::string before = file.bytes();
    Execute("delete from Profiles where ProfileNumber = 99");
    EXPECT_EQ(file.bytes(), before);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(ExecutedSql, ThatFailsShowsAnEmptyMessageAndALogEntry) {
    std::string sql = "delete from Nothing";
    EXPECT_FALSE(ExecuteSQL(sql));
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"", runtime::kOkOnly, "Vantreo Ledgix"}}));
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3078});
    EXPECT_EQ(Log(), "07/11/26 09:05:03 \r\n");
}

TEST_F(ExecutedSql, ThatFailsHalfWayChangesNothing) {
    const std::string before = file.bytes();
    Execute("update Profiles set ProfileNumber = 1");
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3022});
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(ExecutedSql, IsNotRunWhenItCanNotBeRewritten) {
    const std::string before = file.bytes();
    Execute("a'bcdef");
    EXPECT_EQ(messages.messages(),
              (std::vector<Message>{{"General Errors...\r\n\r\n5 - Invalid procedure call or argument\r\n\r\n",
                                     runtime::kOkOnly, "Vantreo Ledgix"}}));
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(ExecutedSql, MayNotSelect) {
    Execute("select * from Profiles");
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3065});
    EXPECT_EQ(messages.messages().size(), 1U);
}

TEST_F(ExecutedSql, WithoutADatabaseIsReported) {
    file.Close();
    Execute("delete from Profiles");
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].text.substr(0, 24), "General Errors...\r\n\r\n91 ");
}

TEST_F(ExecutedSql, OfAReadOnlyFileIsReported) {
    file.OpenReadOnly();
    Execute("delete from Profiles");
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3027});
    EXPECT_GT(file.Rows("select * from Profiles").size(), 0U);
}

class BegunChange : public ExecutedSql {};

TEST_F(BegunChange, IsThereForOthersOnceItIsCommitted) {
    const std::string before = file.bytes();
    auto change = BeginChange();
    ASSERT_TRUE(change);
    Execute("delete from Profiles");
    Execute("delete from ProfileProperty");
    EXPECT_EQ(file.bytes(), before);
    change->Commit();
    change.reset();
    EXPECT_TRUE(file.Rows("select * from Profiles").empty());
    EXPECT_TRUE(file.Rows("select * from ProfileProperty").empty());
}

TEST_F(BegunChange, NeverWasWhenItIsDropped) {
    const std::string before = file.bytes();
    auto change = BeginChange();
    Execute("delete from Profiles");
    change.reset();
    EXPECT_EQ(file.bytes(), before);
    EXPECT_EQ(gDatabase->CountRows("Profiles"), 3U);
}

TEST_F(BegunChange, GoesOnBehindAStatementThatFails) {
    auto change = BeginChange();
    Execute("delete from Profiles where ProfileNumber = 1");
    Execute("update Profiles set ProfileNumber = 7");
    Execute("update Profiles set IncSalary = 5 where ProfileNumber = 4");
    change->Commit();
    change.reset();
    EXPECT_EQ(diagnoses.Numbers(), std::vector<int>{3022});
    EXPECT_EQ(file.Column("select ProfileNumber from Profiles order by ProfileNumber"), (Values{2, 4}));
    EXPECT_EQ(file.Column("select IncSalary from Profiles where ProfileNumber = 4"), Values{5.0});
}

TEST_F(BegunChange, IsNoneWithoutADatabaseOrTheRightToWrite) {
    file.Close();
    EXPECT_FALSE(BeginChange());
    file.OpenReadOnly();
    EXPECT_FALSE(BeginChange());
    EXPECT_TRUE(messages.messages().empty());
}

}  // namespace
}  // namespace ledgix::store
