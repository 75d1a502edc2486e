#include <gtest/gtest.h>

#include "error_of.h"
#include "fresh_database.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

class SchemaObjects : public FreshDatabase {};

TableDef TableOf(const std::string& name, std::initializer_list<Field> fields) {
    TableDef table{name, {}, {}, 0};
    for (const Field& field : fields)
        table.fields.Append(field);
    return table;
}

TEST_P(SchemaObjects, ATableHasTheFieldsThatItWasGiven) {
    const TableDef things = OpenAgain()->TableDefinition("THINGS");
    EXPECT_EQ(things.name, "Things");
    ASSERT_EQ(things.fields.Count(), 5U);
    EXPECT_EQ(things.fields[std::size_t{0}].name, "Number");
    EXPECT_EQ(things.fields["name"].type, kText);
    EXPECT_EQ(things.fields["name"].size, 10);
    EXPECT_EQ(things.fields["price"].type, kDouble);
    EXPECT_EQ(things.fields["sold"].type, kBoolean);
    EXPECT_EQ(things.fields["day"].type, kDate);
    EXPECT_TRUE(things.indexes["primarykey"].primary);
}

TEST_P(SchemaObjects, SizesMatterForTextOnly) {
    database->CreateTable(TableOf("Sizes", {{"Rate", kSingle, 10, 0}, {"Name", kText, 0, 0}}));
    const TableDef sizes = database->TableDefinition("Sizes");
    EXPECT_EQ(sizes.fields["Rate"].size, 4);
    EXPECT_EQ(sizes.fields["Name"].size, 255);
    for (const int size : {256, 70000, -1})
        EXPECT_ERROR(database->CreateTable(TableOf("Wide", {{"Name", kText, size, 0}})), ErrorNumber::kInvalidFieldType)
            << size;
    EXPECT_FALSE(database->HasTable("Wide"));
}

TEST_P(SchemaObjects, ATableIsMadeOnce) {
    EXPECT_ERROR(database->CreateTable(TableOf("things", {{"Number", kLong, 0, 0}})), ErrorNumber::kTableExists);
    EXPECT_EQ(database->TableDefinition("Things").fields.Count(), 5U);
}

TEST_P(SchemaObjects, AFieldComesBehindTheOthers) {
    database->Execute("insert into Things (Number) values (1)");
    database->AppendField("things", {"Colour", kText, 20, 0});
    database->AppendField("Things", {"Used", kBoolean, 0, 0});
    const TableDef things = OpenAgain()->TableDefinition("Things");
    ASSERT_EQ(things.fields.Count(), 7U);
    EXPECT_EQ(things.fields[std::size_t{5}].name, "Colour");
    EXPECT_EQ(Values("select Colour from Things"), List(Null{}));
    EXPECT_EQ(Values("select Used from Things"), List(false));
    EXPECT_EQ(database->Execute("update Things set [Colour] = 'red'"), 1U);
    EXPECT_EQ(Values("select Colour from Things"), List(Words("red")));
}

TEST_P(SchemaObjects, AFieldIsAppendedOnce) {
    EXPECT_ERROR(database->AppendField("Things", {"NAME", kText, 20, 0}), ErrorNumber::kDuplicateField);
}

TEST_P(SchemaObjects, AKeyOverSeveralFieldsKeepsThePairsApart) {
    database->CreateTable(TableOf("Pairs", {{"First", kLong, 0, 0}, {"Second", kLong, 0, 0}}));
    Index key{"PrimaryKey", {{"First"}, {"second"}}};
    key.primary = key.unique = true;
    database->AppendIndex("pairs", key);
    database->Execute("insert into Pairs values (1, 1)");
    database->Execute("insert into Pairs values (1, 2)");
    EXPECT_ERROR(database->Execute("insert into Pairs values (1, 2)"), ErrorNumber::kDuplicateIndexValue);
    const Index stored = OpenAgain()->TableDefinition("Pairs").indexes["primarykey"];
    EXPECT_TRUE(stored.primary);
    EXPECT_TRUE(stored.unique);
    ASSERT_EQ(stored.fields.size(), 2U);
    EXPECT_EQ(stored.fields[1].name, "Second");
    EXPECT_ERROR(database->AppendIndex("Pairs", key), ErrorNumber::kIndexExists);
}

TEST_P(SchemaObjects, AnIndexMayDescendAndTakeDoubles) {
    Index index{"ByPrice", {{"Price", true}}};
    database->AppendIndex("Things", index);
    for (const int number : {1, 2, 3})
        database->Execute("insert into Things (Number, Price) values (" + std::to_string(number) + ", 5)");
    const TableDef things = database->TableDefinition("Things");
    EXPECT_FALSE(things.indexes["ByPrice"].unique);
    EXPECT_TRUE(things.indexes["ByPrice"].fields[0].descending);
}

TEST_P(SchemaObjects, AnIndexThatTheRowsContradictIsNotMade) {
    database->Execute("insert into Things (Number, Price) values (1, 5)");
    database->Execute("insert into Things (Number, Price) values (2, 5)");
    Index index{"ByPrice", {{"Price"}}};
    index.unique = true;
    EXPECT_ERROR(database->AppendIndex("Things", index), ErrorNumber::kDuplicateIndexValue);
    EXPECT_FALSE(OpenAgain()->TableDefinition("Things").indexes.Contains("ByPrice"));
    EXPECT_ERROR(database->AppendIndex("Things", Index{"ByColour", {{"Colour"}}}), ErrorNumber::kItemNotFound);
}

TEST_P(SchemaObjects, ATableWhoseIndexFailsIsNotMade) {
    TableDef table = TableOf("Half", {{"Number", kLong, 0, 0}});
    table.indexes.Append(Index{"ByColour", {{"Colour"}}});
    EXPECT_ERROR(database->CreateTable(table), ErrorNumber::kItemNotFound);
    EXPECT_FALSE(database->HasTable("Half"));
}

TEST_P(SchemaObjects, TablesThatAreMissingOrTheEnginesOwnAreRefused) {
    const Field field{"Extra", kLong, 0, 0};
    EXPECT_ERROR(database->AppendField("Nothing", field), ErrorNumber::kItemNotFound);
    EXPECT_ERROR(database->AppendIndex("Nothing", Index{"Key", {{"Number"}}}), ErrorNumber::kItemNotFound);
    EXPECT_ERROR(database->AppendField("MSysObjects", field), ErrorNumber::kDatabaseReadOnly);
    EXPECT_ERROR(database->AppendIndex("MSysObjects", Index{"Key", {{"Id"}}}), ErrorNumber::kDatabaseReadOnly);
}

TEST_P(SchemaObjects, EveryTypeOfFieldKeepsItsValues) {
    database->CreateTable(TableOf("Types", {{"A", kByte, 0, 0},
                                            {"B", kInteger, 0, 0},
                                            {"C", kCurrency, 0, 0},
                                            {"D", kSingle, 0, 0},
                                            {"E", kGuid, 0, 0},
                                            {"F", kMemo, 0, 0},
                                            {"G", kBinary, 3, 0}}));
    const auto rows = database->OpenRecordset("Types");
    rows->AddNew();
    rows->Set("A", 255);
    rows->Set("B", Words("-32768"));
    rows->Set("C", 19.95);
    rows->Set("D", 6.7);
    rows->Set("E", Words("{12345678-9ABC-DEF0-0123-456789ABCDEF}"));
    rows->Set("F", Words("memo"));
    rows->Set("G", runtime::Binary{1, 2, 3});
    rows->Update();
    const auto other = OpenAgain();
    const auto stored = other->OpenRecordset("Types");
    rows->MoveFirst();
    for (std::size_t i = 0; i < stored->fields().Count(); ++i)
        EXPECT_EQ((*stored)[i], (*rows)[i]) << i;
    EXPECT_EQ((*stored)["C"], Variant(runtime::Currency{199500}));
    EXPECT_EQ((*stored)["D"], Variant(6.7F));
}

FOR_BOTH_FORMATS(SchemaObjects);

TEST(Collection, FindsWhatWasAppended) {
    Collection<Field> fields;
    fields.Append({"Größe", kLong, 0, 0});
    fields.Append({"Name", kText, 50, 0});
    EXPECT_EQ(fields.Count(), 2U);
    EXPECT_EQ(fields.PositionOf("NAME"), 1U);
    EXPECT_EQ(fields.PositionOf("GRÖßE"), 0U);
    EXPECT_FALSE(fields.Contains("Nam"));
    EXPECT_ERROR(fields["Nam"], ErrorNumber::kItemNotFound);
    EXPECT_ERROR(fields[std::size_t{2}], ErrorNumber::kItemNotFound);
}

}  // namespace
}  // namespace ledgix::dao
