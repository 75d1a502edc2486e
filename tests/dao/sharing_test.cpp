#include <gtest/gtest.h>

#include "dao_transaction.h"
#include "error_of.h"
#include "fresh_database.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;

constexpr auto kDenyAll = static_cast<std::int16_t>(kDenyRead | kDenyWrite);

// Two programs with one file open; neither waits long.
class Sharing : public FreshDatabase {
protected:
    Sharing() {
        database->Execute("insert into Things (Number) values (1)");
        database->SetPatience(std::chrono::milliseconds(20));
        other->SetPatience(std::chrono::milliseconds(20));
    }

    void Insert(Database& into, int number) {
        into.Execute("insert into Things (Number) values (" + std::to_string(number) + ")");
    }

    std::unique_ptr<Database> other = OpenAgain();
};

TEST_P(Sharing, EachSeesWhatTheOtherWrites) {
    Insert(*other, 2);
    EXPECT_EQ(database->CountRows("Things"), 2U);
    Insert(*database, 3);
    EXPECT_EQ(other->CountRows("Things"), 3U);
    EXPECT_EQ(other->OpenRecordset("Things")->RecordCount(), 3U);
}

TEST_P(Sharing, EachSeesTheTablesThatTheOtherMakes) {
    EXPECT_FALSE(database->HasTable("Later"));
    TableDef later{"Later", {}, {}, 0};
    later.fields.Append({"Number", kLong, 0, 0});
    other->CreateTable(later);
    EXPECT_TRUE(database->HasTable("Later"));
    EXPECT_FALSE(database->TableDefinition("Later").fields.Contains("Text"));
    other->AppendField("Later", {"Text", kText, 5, 0});
    EXPECT_TRUE(database->TableDefinition("Later").fields.Contains("Text"));
}

TEST_P(Sharing, AnOpenRecordsetIsInNobodysWay) {
    const auto mine = database->OpenRecordset("Things");
    const auto theirs = other->OpenRecordset("Things");
    mine->Edit();
    Insert(*other, 2);
    mine->Set("Price", 7);
    mine->Update();
    EXPECT_EQ(Values("select Price from Things where Number = 1"), List(7.0));
}

TEST_P(Sharing, DenyWriteKeepsOthersFromChangingTheTable) {
    const auto theirs = other->OpenRecordset("Things");
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyWrite);
    EXPECT_ERROR(Insert(*other, 2), ErrorNumber::kTableInUse);
    theirs->Edit();
    EXPECT_ERROR(theirs->Update(), ErrorNumber::kTableInUse);
    EXPECT_ERROR(theirs->Delete(), ErrorNumber::kTableInUse);
    EXPECT_NO_THROW(other->OpenRecordset("Things"));
}

TEST_P(Sharing, DenyReadKeepsOthersFromOpeningTheTable) {
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyRead);
    EXPECT_ERROR(other->OpenRecordset("select Number from things"), ErrorNumber::kTableInUse);
    EXPECT_NO_THROW(Insert(*other, 2));
}

TEST_P(Sharing, OtherTablesAreFree) {
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyAll);
    EXPECT_NO_THROW(other->OpenRecordset("MSysObjects"));
}

TEST_P(Sharing, OneselfIsNotDenied) {
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyAll);
    Insert(*database, 2);
    rows->Edit();
    rows->Set("Price", 7);
    rows->Update();
    EXPECT_EQ(database->OpenRecordset("Things", kOpenDynaset, kDenyAll)->RecordCount(), 2U);
}

TEST_P(Sharing, ClosingEndsTheDenial) {
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyAll);
    rows->Close();
    EXPECT_NO_THROW(other->OpenRecordset("Things", kOpenDynaset, kDenyAll));
    database->OpenRecordset("Things", kOpenDynaset, kDenyAll);
    EXPECT_NO_THROW(Insert(*other, 2));
}

TEST_P(Sharing, TwoDenialsDoNotGoTogether) {
    const auto rows = database->OpenRecordset("Things", kOpenDynaset, kDenyWrite);
    EXPECT_ERROR(other->OpenRecordset("Things", kOpenDynaset, kDenyWrite), ErrorNumber::kTableInUse);
}

TEST_P(Sharing, ADenialOfAnOpeningThatFailsEnds) {
    EXPECT_ERROR(database->OpenRecordset("select Colour from Things", kOpenDynaset, kDenyAll),
                 ErrorNumber::kTooFewParameters);
    EXPECT_NO_THROW(Insert(*other, 2));
}

TEST_P(Sharing, ATransactionIsSeenWhenItIsWhole) {
    {
        Transaction transaction(*database);
        Insert(*database, 2);
        Insert(*database, 3);
        EXPECT_EQ(database->CountRows("Things"), 3U);
        EXPECT_ERROR(other->CountRows("Things"), ErrorNumber::kLockedByOther);
        transaction.Commit();
    }
    EXPECT_EQ(other->CountRows("Things"), 3U);
}

TEST_P(Sharing, ATransactionThatIsNotCommittedNeverWas) {
    {
        const Transaction transaction(*database);
        Insert(*database, 2);
        TableDef later{"Later", {}, {}, 0};
        later.fields.Append({"Number", kLong, 0, 0});
        database->CreateTable(later);
        EXPECT_TRUE(database->HasTable("Later"));
        const auto rows = database->OpenRecordset("Things");
        rows->Delete();
    }
    EXPECT_FALSE(database->HasTable("Later"));
    EXPECT_EQ(database->CountRows("Things"), 1U);
    EXPECT_EQ(Values("select Number from Things"), List(1));
}

TEST_P(Sharing, AStatementThatFailsLeavesItsTransactionGoing) {
    Transaction transaction(*database);
    Insert(*database, 2);
    EXPECT_ERROR(Insert(*database, 1), ErrorNumber::kDuplicateIndexValue);
    Insert(*database, 3);
    transaction.Commit();
    EXPECT_EQ(other->CountRows("Things"), 3U);
}

TEST_P(Sharing, RowsOfSeveralRecordsetsGoIntoOneTransaction) {
    Transaction transaction(*database);
    const auto first = database->OpenRecordset("Things");
    const auto second = database->OpenRecordset("Things");
    for (int number = 10; number < 300; ++number) {
        Recordset& rows = number % 2 == 0 ? *first : *second;
        rows.AddNew();
        rows.Set("Number", number);
        rows.Update();
    }
    transaction.Commit();
    EXPECT_EQ(other->CountRows("Things"), 291U);
    EXPECT_EQ(Values("select Number from Things where Number = 299"), List(299));
}

FOR_BOTH_FORMATS(Sharing);

}  // namespace
}  // namespace ledgix::dao
