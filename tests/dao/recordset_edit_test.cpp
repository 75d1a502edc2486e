#include <gtest/gtest.h>

#include <cmath>

#include "access.h"
#include "dao_transaction.h"
#include "database_file.h"
#include "error_of.h"
#include "fresh_database.h"
#include "table_writer.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

class RecordsetEdit : public FreshDatabase {
protected:
    RecordsetEdit() {
        Transaction transaction(*database);
        for (const int number : {1, 2, 3})
            database->Execute("insert into Things (Number, Name, Price) values (" + std::to_string(number) + ", 'n" +
                              std::to_string(number) + "', 1.5)");
        transaction.Commit();
    }

    std::unique_ptr<Recordset> Open(const std::string& source = "select * from Things",
                                    RecordsetType type = kOpenDynaset, std::int16_t options = kNoOptions) {
        return database->OpenRecordset(source, type, options);
    }
};

TEST_P(RecordsetEdit, AddNewAndUpdateAppendARow) {
    const auto rows = Open();
    rows->AddNew();
    rows->Set("number", 4);
    rows->Set("NAME", Words("four"));
    rows->Set("Sold", true);
    rows->Update();
    EXPECT_EQ(Values("select Name from Things where Number = 4"), List(Words("four")));
    EXPECT_EQ(Values("select Sold from Things where Number = 4"), List(true));
    EXPECT_EQ(Values("select Price from Things where Number = 4"), List(Null{}));
}

TEST_P(RecordsetEdit, ANewRowStandsAtTheEndAndThePositionStays) {
    const auto rows = Open();
    rows->MoveNext();
    rows->AddNew();
    rows->Set("Number", 4);
    rows->Update();
    EXPECT_EQ((*rows)["Number"], Variant(2));
    EXPECT_EQ(rows->RecordCount(), 4U);
    rows->MoveLast();
    EXPECT_EQ((*rows)["Number"], Variant(4));
    EXPECT_EQ((*rows)["Sold"], Variant(false));
}

TEST_P(RecordsetEdit, ANewRowCanBeEditedAndDeleted) {
    const auto rows = Open();
    rows->AddNew();
    rows->Set("Number", 4);
    rows->Update();
    rows->MoveLast();
    rows->Edit();
    rows->Set("Price", 7);
    rows->Update();
    EXPECT_EQ(Values("select Price from Things where Number = 4"), List(7.0));
    rows->Delete();
    EXPECT_EQ(Values("select Number from Things"), List(1, 2, 3));
}

TEST_P(RecordsetEdit, ARecordsetWithoutRowsTakesNewOnes) {
    const auto rows = Open("select * from Things where Number = 9");
    rows->AddNew();
    rows->Set("Number", 9);
    rows->Update();
    EXPECT_TRUE(rows->Eof());
    EXPECT_FALSE(rows->Bof());
    rows->MoveFirst();
    EXPECT_EQ((*rows)["Number"], Variant(9));
}

TEST_P(RecordsetEdit, EditAndUpdateChangeTheCurrentRow) {
    const auto rows = Open();
    rows->MoveNext();
    rows->Edit();
    rows->Set("Name", Words("second"));
    rows->Set("Price", Words("2.25"));
    rows->Update();
    EXPECT_EQ((*rows)["Name"], Words("second"));
    EXPECT_EQ((*rows)["Price"], Variant(2.25));
    EXPECT_EQ(Values("select Name from Things"), List(Words("n1"), Words("second"), Words("n3")));
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 2.25, 1.5));
}

TEST_P(RecordsetEdit, ATableTypeRecordsetIsEditedToo) {
    const auto rows = Open("Things", kOpenTable);
    rows->Edit();
    rows->Set("Price", 0);
    rows->Update();
    EXPECT_EQ(Values("select Price from Things"), List(0.0, 1.5, 1.5));
}

TEST_P(RecordsetEdit, ASortedSelectionOfColumnsIsEditedToo) {
    const auto rows = Open("select Price, Number from Things where Number > 1 order by Number desc");
    rows->Edit();
    rows->Set("Price", 9);
    rows->Update();
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 1.5, 9.0));
    EXPECT_EQ(Values("select Name from Things"), List(Words("n1"), Words("n2"), Words("n3")));
    rows->AddNew();
    rows->Set("Number", 4);
    rows->Update();
    EXPECT_EQ(Values("select Name from Things where Number = 4"), List(Null{}));
}

TEST_P(RecordsetEdit, CalculatedFieldsFollowTheirColumns) {
    const auto rows = Open("select Price, Price * 2 as double_price from Things");
    rows->Edit();
    EXPECT_ERROR(rows->Set("double_price", 1), ErrorNumber::kFieldNotUpdatable);
    rows->Set("Price", 4);
    rows->Update();
    EXPECT_EQ((*rows)["double_price"], Variant(8.0));
}

TEST_P(RecordsetEdit, TheEditedRowReadsWhatWasAssigned) {
    const auto rows = Open();
    rows->Edit();
    rows->Set("Price", 7);
    EXPECT_EQ((*rows)["Price"], Variant(7.0));
    EXPECT_EQ((*rows)["Name"], Words("n1"));
    rows->AddNew();
    EXPECT_EQ((*rows)["Name"], Variant(Null{}));
    EXPECT_EQ((*rows)["Sold"], Variant(false));
}

TEST_P(RecordsetEdit, CancelUpdateThrowsTheEditAway) {
    const auto rows = Open();
    rows->Edit();
    rows->Set("Price", 7);
    rows->CancelUpdate();
    EXPECT_EQ((*rows)["Price"], Variant(1.5));
    EXPECT_ERROR(rows->Update(), ErrorNumber::kNotEditing);
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 1.5, 1.5));
}

TEST_P(RecordsetEdit, MovingThrowsTheEditAway) {
    const auto rows = Open();
    rows->Edit();
    rows->Set("Price", 7);
    rows->MoveNext();
    EXPECT_ERROR(rows->Update(), ErrorNumber::kNotEditing);
    rows->MoveFirst();
    EXPECT_EQ((*rows)["Price"], Variant(1.5));
}

TEST_P(RecordsetEdit, WithoutAddNewOrEditNothingIsAssignedOrWritten) {
    const auto rows = Open();
    EXPECT_ERROR(rows->Set("Price", 7), ErrorNumber::kNotEditing);
    EXPECT_ERROR(rows->Update(), ErrorNumber::kNotEditing);
    EXPECT_ERROR(rows->CancelUpdate(), ErrorNumber::kNotEditing);
}

TEST_P(RecordsetEdit, WithoutARowThereIsNothingToEdit) {
    const auto rows = Open("select * from Things where Number = 99");
    EXPECT_ERROR(rows->Edit(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows->Delete(), ErrorNumber::kNoCurrentRecord);
}

TEST_P(RecordsetEdit, ARefusedValueLeavesTheFieldAsItWas) {
    const auto rows = Open();
    rows->Edit();
    EXPECT_ERROR(rows->Set("Price", Words("much")), ErrorNumber::kTypeConversion);
    EXPECT_ERROR(rows->Set("Name", Words("eleven char")), ErrorNumber::kFieldTooSmall);
    EXPECT_ERROR(rows->Set("Colour", 1), ErrorNumber::kItemNotFound);
    EXPECT_EQ((*rows)["Price"], Variant(1.5));
    rows->Set("Sold", true);
    rows->Update();
    EXPECT_EQ(Values("select Price from Things where Sold"), List(1.5));
}

TEST_P(RecordsetEdit, AnUpdateThatFailsCanBeRepeated) {
    const auto rows = Open();
    rows->AddNew();
    rows->Set("Number", 2);
    EXPECT_ERROR(rows->Update(), ErrorNumber::kDuplicateIndexValue);
    EXPECT_EQ(rows->RecordCount(), 3U);
    rows->Set("Number", 4);
    rows->Update();
    EXPECT_EQ(Values("select Number from Things"), List(1, 2, 3, 4));
}

TEST_P(RecordsetEdit, DeleteRemovesTheCurrentRow) {
    const auto rows = Open();
    rows->MoveNext();
    rows->Delete();
    EXPECT_ERROR((*rows)["Number"], ErrorNumber::kRecordDeleted);
    EXPECT_ERROR(rows->Edit(), ErrorNumber::kRecordDeleted);
    EXPECT_ERROR(rows->Delete(), ErrorNumber::kRecordDeleted);
    EXPECT_EQ(rows->RecordCount(), 2U);
    rows->MoveNext();
    EXPECT_EQ((*rows)["Number"], Variant(3));
    rows->MovePrevious();
    EXPECT_EQ((*rows)["Number"], Variant(1));
    EXPECT_EQ(Values("select Number from Things"), List(1, 3));
}

TEST_P(RecordsetEdit, AllRowsCanBeDeletedOneByOne) {
    const auto rows = Open();
    for (; !rows->Eof(); rows->MoveNext())
        rows->Delete();
    EXPECT_TRUE(rows->Bof());
    EXPECT_ERROR(rows->MoveFirst(), ErrorNumber::kNoCurrentRecord);
    EXPECT_ERROR(rows->MoveLast(), ErrorNumber::kNoCurrentRecord);
    EXPECT_EQ(Values("select Number from Things").size(), 0U);
}

TEST_P(RecordsetEdit, SnapshotsAndForwardOnlyRecordsetsAreNotEdited) {
    for (const RecordsetType type : {kOpenSnapshot, kOpenForwardOnly}) {
        const auto rows = Open("select * from Things", type);
        EXPECT_ERROR(rows->AddNew(), ErrorNumber::kFeatureNotAvailable);
        EXPECT_ERROR(rows->Edit(), ErrorNumber::kFeatureNotAvailable);
        EXPECT_ERROR(rows->Delete(), ErrorNumber::kFeatureNotAvailable);
    }
}

TEST_P(RecordsetEdit, ReadOnlyRecordsetsAndSystemTablesAreNotEdited) {
    const auto read_only = Open("Things", kOpenDynaset, kReadOnly);
    EXPECT_ERROR(read_only->AddNew(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(read_only->Edit(), ErrorNumber::kDatabaseReadOnly);
    const auto catalogue = Open("MSysObjects");
    EXPECT_ERROR(catalogue->Edit(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(catalogue->Delete(), ErrorNumber::kDatabaseReadOnly);
}

TEST_P(RecordsetEdit, ClosedNothingIsEdited) {
    const auto rows = Open();
    rows->Edit();
    rows->Set("Price", 7);
    rows->Close();
    EXPECT_ERROR(rows->Update(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows->AddNew(), ErrorNumber::kObjectClosed);
    EXPECT_ERROR(rows->Set("Price", 7), ErrorNumber::kObjectClosed);
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 1.5, 1.5));
}

TEST_P(RecordsetEdit, ARowThatAnotherChangedIsNotOverwritten) {
    const auto rows = Open();
    OpenAgain()->Execute("update Things set Name = 'theirs' where Number = 1");
    rows->Edit();
    rows->Set("Price", 7);
    EXPECT_ERROR(rows->Update(), ErrorNumber::kChangedByAnother);
    EXPECT_ERROR(rows->Update(), ErrorNumber::kChangedByAnother);
    rows->CancelUpdate();
    EXPECT_ERROR(rows->Delete(), ErrorNumber::kChangedByAnother);
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 1.5, 1.5));
    EXPECT_EQ(Values("select Name from Things where Number = 1"), List(Words("theirs")));
}

TEST_P(RecordsetEdit, OtherRowsMayHaveChanged) {
    const auto rows = Open();
    OpenAgain()->Execute("update Things set Name = 'theirs' where Number = 2");
    rows->Edit();
    rows->Set("Price", 7);
    rows->Update();
    EXPECT_EQ(Values("select Price from Things"), List(7.0, 1.5, 1.5));
    EXPECT_EQ(Values("select Name from Things where Number = 2"), List(Words("theirs")));
}

TEST_P(RecordsetEdit, ARowThatAnotherDeletedIsGone) {
    for (const char* statement : {"delete from Things where Number = 1", "delete from Things"}) {
        const auto rows = Open();
        rows->Edit();
        rows->Set("Price", 7);
        OpenAgain()->Execute(statement);
        EXPECT_ERROR(rows->Update(), ErrorNumber::kRecordDeleted) << statement;
        EXPECT_ERROR(rows->Delete(), ErrorNumber::kRecordDeleted) << statement;
    }
}

TEST_P(RecordsetEdit, ColumnsMayBeAddedMeanwhile) {
    const auto rows = Open();
    OpenAgain()->AppendField("Things", {"Colour", kText, 20, 0});
    OpenAgain()->Execute("update Things set Colour = 'red'");
    rows->Edit();
    rows->Set("Name", Words("changed"));
    rows->Update();
    rows->AddNew();
    rows->Set("Number", 4);
    rows->Update();
    EXPECT_EQ(Values("select Colour from Things"), List(Words("red"), Words("red"), Words("red"), Null{}));
    EXPECT_EQ(Values("select Name from Things where Number = 1"), List(Words("changed")));
}

TEST_P(RecordsetEdit, AutonumbersAreGivenAndShown) {
    TableDef table{"Counted", {}, {}, 0};
    table.fields.Append({"Id", kLong, 0, kAutoIncrementField});
    table.fields.Append({"Text", kMemo, 0, 0});
    database->CreateTable(table);
    const auto rows = Open("Counted");
    for (const char* text : {"first", "second"}) {
        rows->AddNew();
        rows->Set("Text", Words(text));
        rows->Update();
    }
    rows->MoveLast();
    EXPECT_EQ((*rows)["Id"], Variant(2));
    rows->Edit();
    EXPECT_ERROR(rows->Set("Id", 7), ErrorNumber::kFieldNotUpdatable);
    EXPECT_ERROR(database->Execute("update Counted set Id = 7"), ErrorNumber::kFieldNotUpdatable);
}

TEST_P(RecordsetEdit, LongTextsAreStoredAndChanged) {
    TableDef table{"Notes", {}, {}, 0};
    table.fields.Append({"Text", kMemo, 0, 0});
    table.fields.Append({"Bytes", kLongBinary, 0, 0});
    database->CreateTable(table);
    const std::string text(30000, 'x');
    const auto rows = Open("Notes");
    rows->AddNew();
    rows->Set("Text", text);
    rows->Set("Bytes", runtime::Binary(5000, 7));
    rows->Update();
    rows->MoveFirst();
    rows->Edit();
    rows->Set("Text", text + "y");
    rows->Update();
    EXPECT_EQ((*rows)["Text"], Variant(text + "y"));
    EXPECT_EQ(Values("select Text from Notes"), List(text + "y"));
    EXPECT_EQ(Values("select Bytes from Notes"), List(runtime::Binary(5000, 7)));
}

// Not a number, which equals nothing, is what it was.
TEST_P(RecordsetEdit, AnyStoredNumberIsUnchangedWhenItIsReadAgain) {
    {
        jet::DatabaseFile file(path, jet::OpenMode::kReadWrite);
        jet::Transaction transaction(file);
        const jet::TableDefinition table = file.ReadTableDefinition(file.FindTable("Things")->DefinitionPage());
        jet::TableWriter(file, table).Insert({4, Null{}, std::nan(""), false, runtime::Date{std::nan("")}});
        transaction.Commit();
    }
    const auto rows = Open("select * from Things where Number = 4");
    rows->Edit();
    rows->Set("Name", Words("four"));
    rows->Update();
    EXPECT_EQ(Values("select Name from Things where Number = 4"), List(Words("four")));
}

TEST_P(RecordsetEdit, AFileThatMayNotBeWrittenStaysAsItIs) {
    Database read_only(path, std::make_unique<jet::DatabaseFile>(path, jet::OpenMode::kRead));
    const auto rows = read_only.OpenRecordset("Things", kOpenDynaset, kDenyRead | kDenyWrite);
    rows->Edit();
    rows->Set("Price", 7);
    EXPECT_ERROR(rows->Update(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(rows->Delete(), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(read_only.Execute("delete from Things"), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(read_only.AppendField("Things", {"Extra", kLong, 0, 0}), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(Transaction(read_only), ErrorNumber::kDatabaseReadOnly);
    EXPECT_EQ(Values("select Price from Things"), List(1.5, 1.5, 1.5));
}

FOR_BOTH_FORMATS(RecordsetEdit);

}  // namespace
}  // namespace ledgix::dao
