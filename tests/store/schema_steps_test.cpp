#include <gtest/gtest.h>

#include <chrono>

#include "dao_transaction.h"
#include "database.h"
#include "household_file.h"
#include "schema_upgrade.h"

namespace ledgix::store {
namespace {

using runtime::Null;
using runtime::Variant;
using Values = std::vector<Variant>;

// The steps one by one, on a new file with a table "Things" of the columns Number and Name and three rows.
class SchemaSteps : public testing::TestWithParam<dao::FileFormat> {
protected:
    SchemaSteps() {
        file.Open();
        EXPECT_TRUE(CreateTable("Things", "Number", "0", dao::kLong, 0, 0));
        EXPECT_TRUE(AddColumn("Things", "Name", "''", dao::kText, 50));
        for (const char* name : {"'a'", "'b'", "'c'"})
            file.Execute("insert into Things (Number, Name) values (1, " + std::string(name) + ")");
    }

    dao::TableDef Definition(const std::string& table) const {
        return dao::DefaultWorkspace().OpenDatabase(file.path())->TableDefinition(table);
    }

    test::HouseholdFile file{test::EmptyContent(GetParam())};
    test::MessageRecorder messages;
};

TEST_P(SchemaSteps, ATableIsMadeWithItsFirstColumn) {
    EXPECT_TRUE(CreateTable("Pets", "Name", "''", dao::kText, 20, 0));
    const dao::TableDef pets = Definition("Pets");
    ASSERT_EQ(pets.fields.Count(), 1U);
    EXPECT_EQ(pets.fields["Name"].type, dao::kText);
    EXPECT_EQ(pets.fields["Name"].size, 20);
    EXPECT_EQ(file.Rows("select * from Pets").size(), 0U);
}

TEST_P(SchemaSteps, ATableGetsARowWhenThatIsAskedFor) {
    EXPECT_TRUE(CreateTable("Pets", "Age", "7", dao::kLong, 0, 1));
    EXPECT_EQ(file.Column("select Age from Pets"), Values{7});
}

TEST_P(SchemaSteps, NoColumnCountsByItself) {
    EXPECT_TRUE(CreateTable("Pets", "ProfileNumber", "0", dao::kLong, 0, 0));
    EXPECT_EQ(Definition("Pets").fields["ProfileNumber"].attributes & dao::kAutoIncrementField, 0);
}

TEST_P(SchemaSteps, ATableThatIsThereIsASuccessAndStaysAsItIs) {
    const std::string before = file.bytes();
    EXPECT_TRUE(CreateTable("THINGS", "Colour", "0", dao::kLong, 0, 1));
    EXPECT_EQ(file.bytes(), before);
}

TEST_P(SchemaSteps, ATableOfAnImpossibleTypeFails) {
    EXPECT_FALSE(CreateTable("Pets", "Name", "''", 99, 0, 0));
    EXPECT_FALSE(gDatabase->HasTable("Pets"));
}

TEST_P(SchemaSteps, ATableWhoseRowFailsIsMadeAndNoSuccess) {
    EXPECT_FALSE(CreateTable("Pets", "Age", "'old'", dao::kLong, 0, 1));
    EXPECT_TRUE(gDatabase->HasTable("Pets"));
    EXPECT_EQ(gDatabase->CountRows("Pets"), 0U);
}

TEST_P(SchemaSteps, AColumnHoldsItsDefaultInEveryRow) {
    EXPECT_TRUE(AddColumn("Things", "Price", "3.5", dao::kDouble, 0));
    EXPECT_TRUE(AddColumn("Things", "Used", "0", dao::kBoolean, 0));
    EXPECT_TRUE(AddColumn("Things", "Rate", "0", dao::kSingle, 10));
    EXPECT_TRUE(AddColumn("Things", "Years", "0", dao::kInteger, 0));
    EXPECT_TRUE(AddColumn("Things", "Changed", "#01/01/1900#", dao::kDate, 0));
    for (const Values& row : file.Rows("select Price, Used, Rate, Years, Changed from Things"))
        EXPECT_EQ(row, (Values{3.5, false, 0.0F, std::int16_t{0}, runtime::Date{2}}));
    EXPECT_EQ(file.Column("select Name from Things"), (Values{std::string("a"), std::string("b"), std::string("c")}));
}

TEST_P(SchemaSteps, AColumnWhoseNameIsAWordOfStatementsIsFilled) {
    EXPECT_TRUE(AddColumn("Things", "order", "5", dao::kLong, 0));
    EXPECT_EQ(file.Column("select [order] from Things"), (Values{5, 5, 5}));
}

TEST_P(SchemaSteps, AColumnThatIsThereIsASuccessAndKeepsItsValues) {
    const std::string before = file.bytes();
    EXPECT_TRUE(AddColumn("things", "NAME", "'x'", dao::kDouble, 0));
    EXPECT_EQ(file.bytes(), before);
}

TEST_P(SchemaSteps, AColumnOfAMissingTableFails) {
    EXPECT_FALSE(AddColumn("Nothing", "Name", "''", dao::kText, 50));
}

TEST_P(SchemaSteps, AColumnThatCanNotBeFilledIsAddedAndNoSuccess) {
    EXPECT_FALSE(AddColumn("Things", "Price", "'dear'", dao::kDouble, 0));
    EXPECT_EQ(file.Column("select Price from Things"), (Values{Null{}, Null{}, Null{}}));
}

TEST_P(SchemaSteps, AKeyMayHaveSeveralColumns) {
    EXPECT_TRUE(CreateIndex("Things", "PrimaryKey", "Number", "Name", ""));
    const dao::Index key = Definition("Things").indexes["PrimaryKey"];
    EXPECT_TRUE(key.primary && key.unique && !key.ignore_nulls);
    ASSERT_EQ(key.fields.size(), 2U);
    EXPECT_EQ(key.fields[0].name, "Number");
    EXPECT_EQ(key.fields[1].name, "Name");
}

TEST_P(SchemaSteps, AKeyThatIsThereIsASuccess) {
    ASSERT_TRUE(CreateIndex("Things", "PrimaryKey", "Name", "", ""));
    const std::string before = file.bytes();
    EXPECT_TRUE(CreateIndex("Things", "primarykey", "Number", "", ""));
    EXPECT_EQ(file.bytes(), before);
}

TEST_P(SchemaSteps, AKeyOverEqualRowsFailsAndLeavesTheFile) {
    const std::string before = file.bytes();
    EXPECT_FALSE(CreateIndex("Things", "PrimaryKey", "Number", "", ""));
    EXPECT_EQ(file.bytes(), before);
    EXPECT_EQ(Definition("Things").indexes.Count(), 0U);
}

TEST_P(SchemaSteps, AKeyOverAMissingColumnOrTableFails) {
    EXPECT_FALSE(CreateIndex("Things", "PrimaryKey", "Colour", "", ""));
    EXPECT_FALSE(CreateIndex("Nothing", "PrimaryKey", "Number", "", ""));
}

TEST_P(SchemaSteps, WhatCanNotBeLookedUpCountsAsThere) {
    const std::string before = file.bytes();
    gDatabase->SetPatience(std::chrono::milliseconds(1));
    const auto other = dao::DefaultWorkspace().OpenDatabase(file.path());
    const dao::Transaction keeping_out(*other);
    EXPECT_TRUE(CreateTable("Pets", "Name", "''", dao::kText, 20, 0));
    EXPECT_TRUE(AddColumn("Things", "Price", "0", dao::kDouble, 0));
    EXPECT_TRUE(CreateIndex("Things", "PrimaryKey", "Name", "", ""));
    EXPECT_EQ(file.bytes(), before);
}

TEST_P(SchemaSteps, NothingCanBeAddedToAReadOnlyFile) {
    const std::string before = file.bytes();
    file.OpenReadOnly();
    EXPECT_FALSE(CreateTable("Pets", "Name", "''", dao::kText, 20, 0));
    EXPECT_FALSE(AddColumn("Things", "Price", "0", dao::kDouble, 0));
    EXPECT_FALSE(CreateIndex("Things", "PrimaryKey", "Name", "", ""));
    EXPECT_TRUE(AddColumn("Things", "Name", "''", dao::kText, 50));
    EXPECT_EQ(file.bytes(), before);
}

TEST_P(SchemaSteps, WithoutADatabaseEachFails) {
    file.Close();
    EXPECT_FALSE(CreateTable("Pets", "Name", "''", dao::kText, 20, 0));
    EXPECT_FALSE(AddColumn("Things", "Name", "''", dao::kText, 50));
    EXPECT_FALSE(CreateIndex("Things", "PrimaryKey", "Name", "", ""));
}

TEST_P(SchemaSteps, ShowNoMessage) {
    EXPECT_FALSE(AddColumn("Nothing", "Name", "''", dao::kText, 50));
    EXPECT_TRUE(messages.messages().empty());
}

INSTANTIATE_TEST_SUITE_P(Formats, SchemaSteps, testing::ValuesIn(test::kBothFormats), test::FormatName);

}  // namespace
}  // namespace ledgix::store
