#include <gtest/gtest.h>

#include "dao_transaction.h"
#include "date_time.h"
#include "error_of.h"
#include "fresh_database.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

class Execute : public FreshDatabase {
protected:
    Execute() {
        Transaction transaction(*database);
        database->Execute("insert into Things (Number, Name, Price) values (1, 'one', 1.5)");
        database->Execute("insert into Things (Number, Name, Price) values (2, 'two', 2.5)");
        database->Execute("insert into Things (Number, Name, Price) values (3, 'three', 3.5)");
        transaction.Commit();
    }

    // True when the statement raises the error and leaves the rows as they are.
    void ExpectRefused(const std::string& statement, ErrorNumber number) {
        const auto before = Rows();
        EXPECT_ERROR(database->Execute(statement), number) << statement;
        EXPECT_EQ(Rows(), before) << statement;
    }

    std::vector<Variant> Rows() const {
        std::vector<Variant> all;
        for (const char* column : {"Number", "Name", "Price", "Sold", "Day"})
            for (const Variant& value : Values(std::string("select ") + column + " from Things"))
                all.push_back(value);
        return all;
    }
};

TEST_P(Execute, AnInsertAppendsARow) {
    EXPECT_EQ(database->Execute("INSERT INTO things (number, [NAME], Price, Sold, Day) "
                                "VALUES (2 + 2, 'O''Brien', '4.5', -1, #02/14/2026 20:15:30#);"),
              1U);
    EXPECT_EQ(Values("select Number from Things"), List(1, 2, 3, 4));
    EXPECT_EQ(Values("select Name from Things where Number = 4"), List(Words("O'Brien")));
    EXPECT_EQ(Values("select Price from Things where Number = 4"), List(4.5));
    EXPECT_EQ(Values("select Sold from Things where Number = 4"), List(true));
    EXPECT_EQ(Values("select Day from Things where Number = 4"),
              List(runtime::ToDate(runtime::CivilTime{2026, 2, 14, 20, 15, 30})));
}

TEST_P(Execute, ColumnsThatAnInsertDoesNotNameAreNull) {
    EXPECT_EQ(Values("select Day from Things"), List(Null{}, Null{}, Null{}));
    EXPECT_EQ(Values("select Sold from Things"), List(false, false, false));
}

TEST_P(Execute, AnInsertWithoutColumnsNeedsAValueForEach) {
    database->Execute("insert into Things values (4, 'four', 4.5, true, null)");
    EXPECT_EQ(Values("select Name from Things where Sold"), List(Words("four")));
    ExpectRefused("insert into Things values (5, 'five')", ErrorNumber::kValueCountDiffers);
}

TEST_P(Execute, AnInsertNeedsAsManyValuesAsColumns) {
    ExpectRefused("insert into Things (Number) values (4, 5)", ErrorNumber::kValueCountDiffers);
    ExpectRefused("insert into Things (Number, Name) values (4)", ErrorNumber::kValueCountDiffers);
}

TEST_P(Execute, AnInsertRefusesColumnsThatItDoesNotKnowOrMeetsTwice) {
    ExpectRefused("insert into Things (Number, Colour) values (4, 'red')", ErrorNumber::kUnknownInsertField);
    ExpectRefused("insert into Things (Number, Other.Name) values (4, 'red')", ErrorNumber::kUnknownInsertField);
    ExpectRefused("insert into Things (Number, number) values (4, 5)", ErrorNumber::kDuplicateDestination);
}

TEST_P(Execute, ValuesOfAnInsertHaveNoColumns) {
    ExpectRefused("insert into Things (Number) values (Number)", ErrorNumber::kTooFewParameters);
}

TEST_P(Execute, AKeyIsInsertedOnce) {
    ExpectRefused("insert into Things (Number) values (2)", ErrorNumber::kDuplicateIndexValue);
    ExpectRefused("insert into Things (Name) values ('no number')", ErrorNumber::kNullInKey);
}

TEST_P(Execute, AnUpdateSetsAllRowsOrThoseOfItsCondition) {
    EXPECT_EQ(database->Execute("update Things set [Price] = 3.5"), 3U);
    EXPECT_EQ(Values("select Price from Things"), List(3.5, 3.5, 3.5));
    EXPECT_EQ(database->Execute("UPDATE things SET Price = 0, Things.Name = 'x' WHERE Number >= 2"), 2U);
    EXPECT_EQ(Values("select Price from Things"), List(3.5, 0.0, 0.0));
    EXPECT_EQ(Values("select Name from Things"), List(Words("one"), Words("x"), Words("x")));
    EXPECT_EQ(database->Execute("update Things set Price = 1 where Number = 99"), 0U);
}

TEST_P(Execute, AnUpdateFindsItsRowsByTheirKey) {
    EXPECT_EQ(database->Execute("update Things set Price = 9 where Number = 2"), 1U);
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 9.0, 3.5));
}

TEST_P(Execute, AnUpdateComputesFromTheRowAsItWas) {
    database->Execute("update Things set Price = Number, Number = Price * 2 + 100, Name = Name & Price");
    EXPECT_EQ(Values("select Number from Things"), List(103, 105, 107));
    EXPECT_EQ(Values("select Price from Things"), List(1.0, 2.0, 3.0));
    EXPECT_EQ(Values("select Name from Things"), List(Words("one1.5"), Words("two2.5"), Words("three3.5")));
}

TEST_P(Execute, AnUpdateTouchesEveryRowOnceThoughRowsMove) {
    Transaction transaction(*database);
    database->Execute("delete from Things");
    for (int i = 0; i < 400; ++i)
        database->Execute("insert into Things (Number, Price) values (" + std::to_string(i) + ", 0)");
    EXPECT_EQ(database->Execute("update Things set Name = 'longername', Price = Price + 1 where Price >= 0"), 400U);
    EXPECT_EQ(database->Execute("update Things set Number = Number + 1000 where Number < 5000"), 400U);
    transaction.Commit();
    EXPECT_EQ(Values("select Price from Things where Price = 1").size(), 400U);
    EXPECT_EQ(Values("select Number from Things where Number = 1399"), List(1399));
}

TEST_P(Execute, AnUpdateThatFailsHalfWayChangesNothing) {
    ExpectRefused("update Things set Number = 7", ErrorNumber::kDuplicateIndexValue);
    ExpectRefused("update Things set Price = 1 / (Number - 3)", ErrorNumber::kDivisionByZero);
    ExpectRefused("update Things set Name = Name & '1234567'", ErrorNumber::kFieldTooSmall);
    ExpectRefused("update Things set Price = Name", ErrorNumber::kTypeConversion);
    ExpectRefused("update Things set Number = null", ErrorNumber::kNullInKey);
}

TEST_P(Execute, AnUpdateRefusesUnknownAndDoubledColumns) {
    ExpectRefused("update Things set Colour = 1", ErrorNumber::kTooFewParameters);
    ExpectRefused("update Things set Price = Colour", ErrorNumber::kTooFewParameters);
    ExpectRefused("update Things set Price = 1 where Colour = 1", ErrorNumber::kTooFewParameters);
    ExpectRefused("update Things set Price = 1, [price] = 2", ErrorNumber::kDuplicateDestination);
}

TEST_P(Execute, ADeleteRemovesTheRowsOfItsCondition) {
    EXPECT_EQ(database->Execute("delete from things where Number = 2"), 1U);
    EXPECT_EQ(Values("select Number from Things"), List(1, 3));
    EXPECT_EQ(database->Execute("delete * from Things where Name like 't*'"), 1U);
    EXPECT_EQ(database->Execute("delete from Things"), 1U);
    EXPECT_EQ(Values("select Number from Things").size(), 0U);
    ExpectRefused("delete from Things where Colour = 1", ErrorNumber::kTooFewParameters);
}

TEST_P(Execute, TheKeyOfADeletedRowIsFreeAgain) {
    database->Execute("delete from Things where Number = 2");
    database->Execute("insert into Things (Number) values (2)");
    EXPECT_EQ(Values("select Number from Things where Number = 2"), List(2));
}

TEST_P(Execute, TheNumberOfRowsIsKeptUntilTheNextStatement) {
    database->Execute("update Things set Price = 1 where Number <> 2");
    EXPECT_EQ(database->RecordsAffected(), 2U);
    EXPECT_ERROR(database->Execute("update Things set Number = 7"), ErrorNumber::kDuplicateIndexValue);
    EXPECT_EQ(database->RecordsAffected(), 2U);
}

TEST_P(Execute, TablesThatAreMissingOrTheEnginesOwnAreRefused) {
    EXPECT_ERROR(database->Execute("delete from Nothing"), ErrorNumber::kTableNotFound);
    EXPECT_ERROR(database->Execute("delete from MSysObjects"), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(database->Execute("insert into MSysACES (ACM) values (1)"), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(database->Execute("select * from Things"), ErrorNumber::kSelectExecuted);
}

TEST_P(Execute, ValuesComeBackAsTheyWereGiven) {
    database->Execute("update Things set Name = 'Ünïcødé' where Number = 1");
    database->Execute("update Things set Name = '' where Number = 2");
    database->Execute("update Things set Name = null where Number = 3");
    EXPECT_EQ(Values("select Name from Things"), List(Words("Ünïcødé"), Words(""), Null{}));
}

FOR_BOTH_FORMATS(Execute);

TEST(ExecuteOnAFile, LinkedTablesAreRefused) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("copy.mdb", test::Content(LEDGIX_TEST_DATA "/mdb/household-clutter.mdb"));
    const auto database = DefaultWorkspace().OpenDatabase(path);
    std::string linked;
    for (const TableEntry& table : database->Tables())
        if (table.kind == TableEntry::Kind::kLinked)
            linked = table.name;
    ASSERT_FALSE(linked.empty());
    EXPECT_ERROR(database->Execute("delete from [" + linked + "]"), ErrorNumber::kFeatureNotAvailable);
}

TEST(ExecuteOnAFile, AnExistingFileIsChangedInPlace) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("copy.mdb", test::Content(LEDGIX_TEST_DATA "/mdb/household-2000.mdb"));
    const auto database = DefaultWorkspace().OpenDatabase(path);
    EXPECT_EQ(database->Execute("update Profiles set profile_name = 'Somebody', IncSalary = IncSalary * 2 "
                                "where ProfileNumber = 1"),
              1U);
    EXPECT_EQ(database->Execute("delete from ProfileProperty where ProfileNumber = 1"), 3U);
    const auto again = DefaultWorkspace().OpenDatabase(path);
    const auto rows = again->OpenRecordset("select * from Profiles where ProfileNumber = 1");
    EXPECT_EQ((*rows)["profile_name"], Words("Somebody"));
    EXPECT_EQ((*rows)["IncSalary"], Variant(165000.0));
    EXPECT_EQ(again->CountRows("ProfileProperty"), 4U);
}

}  // namespace
}  // namespace ledgix::dao
