#include "dao_database.h"

#include <gtest/gtest.h>

#include "error_of.h"
#include "workspace.h"

namespace ledgix::dao {
namespace {

using runtime::ErrorNumber;
using runtime::Null;
using runtime::Variant;

std::unique_ptr<Database> Open(const std::string& file) {
    return DefaultWorkspace().OpenDatabase(LEDGIX_TEST_DATA "/mdb/" + file);
}

// The values of one column, in the order of the rows.
std::vector<Variant> Column(Database& database, const std::string& statement) {
    std::vector<Variant> values;
    for (const auto rows = database.OpenRecordset(statement); !rows->Eof(); rows->MoveNext())
        values.push_back((*rows)[std::size_t{0}]);
    return values;
}

std::vector<Variant> Numbers(std::initializer_list<std::int32_t> numbers) {
    return {numbers.begin(), numbers.end()};
}

class HouseholdDatabase : public testing::Test {
protected:
    std::unique_ptr<Database> database = Open("household-2000.mdb");
};

TEST_F(HouseholdDatabase, ATableOpensByItsName) {
    const auto rows = database->OpenRecordset("profiles", kOpenTable);
    EXPECT_EQ(rows->RecordCount(), 3U);
    EXPECT_EQ((*rows)["PROFILE_NAME"], Variant(std::string("Hannah and Tom Whitaker")));
    EXPECT_EQ((*rows)["IncSalary"], Variant(82500.0));
}

TEST_F(HouseholdDatabase, AllColumnsComeWithAStar) {
    const auto rows = database->OpenRecordset("select * from ProfileProperty");
    EXPECT_EQ(rows->fields().Count(), 21U);
    EXPECT_EQ(rows->RecordCount(), 7U);
}

TEST_F(HouseholdDatabase, AListChoosesColumnsAndTheirOrder) {
    const auto rows = database->OpenRecordset("select rate, [upper] from tax_rates");
    ASSERT_EQ(rows->fields().Count(), 2U);
    EXPECT_EQ(rows->fields()[std::size_t{0}].type, kSingle);
    EXPECT_EQ((*rows)[std::size_t{0}], Variant(19.5F));
    EXPECT_EQ((*rows)[std::size_t{1}], Variant(38000));
}

TEST_F(HouseholdDatabase, WhereChoosesRows) {
    EXPECT_EQ(Column(*database, "select ProfileNumber from profiles where profilenumber = 2"), Numbers({2}));
    EXPECT_EQ(Column(*database, "select ProfileNumber from profiles where profile_name = 'marcus o''leary'"),
              Numbers({2}));
    EXPECT_EQ(Column(*database, "select PropertyNumber from profileproperty where profilenumber = 4"), Numbers({1, 3}));
    EXPECT_EQ(Column(*database, "select PropertyNumber from profileproperty where interestonly and profilenumber = 1"),
              Numbers({2}));
    EXPECT_EQ(Column(*database,
                     "select ProfileNumber from profiles where last_modified >= #02/14/2026 20:15:30# and "
                     "last_modified < #02/14/2026 20:15:31#"),
              Numbers({1}));
}

TEST_F(HouseholdDatabase, OrderBySorts) {
    EXPECT_EQ(Column(*database, "select upper from tax_rates order by upper"), Numbers({0, 38000, 60000}));
    EXPECT_EQ(Column(*database, "select upper from tax_rates where upper <> 0 order by rate desc"),
              Numbers({60000, 38000}));
    EXPECT_EQ(Column(*database, "select PropertyNumber from profileproperty order by profilenumber desc, propertyname"),
              Numbers({3, 1, 1, 2, 1, 3, 2}));
}

TEST_F(HouseholdDatabase, ItemsMayBeCalculated) {
    const auto rows = database->OpenRecordset("select rate / 100 as share from tax_rates order by upper");
    EXPECT_EQ(rows->fields()[std::size_t{0}].name, "share");
    EXPECT_EQ(rows->fields()[std::size_t{0}].type, kDouble);
}

TEST_F(HouseholdDatabase, NamesOfColumnsMayBearTheTable) {
    EXPECT_EQ(Column(*database, "select p.ProfileNumber from Profiles p where p.ProfileNumber = 4"), Numbers({4}));
    EXPECT_EQ(Column(*database, "select Profiles.ProfileNumber from Profiles where [profiles].[ProfileNumber] = 4"),
              Numbers({4}));
    EXPECT_ERROR(Column(*database, "select other.ProfileNumber from Profiles"), ErrorNumber::kTooFewParameters);
}

TEST_F(HouseholdDatabase, AnUnknownTableIs3078) {
    EXPECT_ERROR(database->OpenRecordset("select * from Nothing"), ErrorNumber::kTableNotFound);
    EXPECT_ERROR(database->OpenRecordset("Nothing"), ErrorNumber::kTableNotFound);
}

TEST_F(HouseholdDatabase, AnUnknownColumnIsAParameterWithoutValue) {
    EXPECT_ERROR(database->OpenRecordset("select nothing from Profiles"), ErrorNumber::kTooFewParameters);
    EXPECT_ERROR(database->OpenRecordset("select * from Profiles where nothing = 1"), ErrorNumber::kTooFewParameters);
    EXPECT_ERROR(database->OpenRecordset("select * from Profiles order by nothing"), ErrorNumber::kTooFewParameters);
}

TEST_F(HouseholdDatabase, ErrorsBearTheEnginesName) {
    try {
        database->OpenRecordset("select * from Nothing");
        FAIL();
    } catch (const runtime::RuntimeError& error) {
        EXPECT_EQ(error.source(), runtime::kEngineSource);
    }
}

TEST_F(HouseholdDatabase, ATableTypeRecordsetNeedsATable) {
    EXPECT_ERROR(database->OpenRecordset("select * from Profiles", kOpenTable), ErrorNumber::kInvalidOperationForType);
}

TEST_F(HouseholdDatabase, TablesAreListedWithTheirKind) {
    std::vector<std::string> user;
    for (const TableEntry& table : database->Tables())
        if (table.kind == TableEntry::Kind::kUser)
            user.push_back(table.name);
    std::sort(user.begin(), user.end());
    EXPECT_EQ(user, (std::vector<std::string>{"ProfileProperty", "Profiles", "Tax_Rates"}));
}

TEST_F(HouseholdDatabase, DefinitionsTellFieldsAndIndexes) {
    const TableDef table = database->TableDefinition("PROFILEPROPERTY");
    EXPECT_EQ(table.name, "ProfileProperty");
    EXPECT_EQ(table.fields["propertyname"].type, kText);
    EXPECT_EQ(table.fields["propertyname"].size, 50);
    EXPECT_EQ(table.fields["interestonly"].type, kBoolean);
    const Index& key = table.indexes["primarykey"];
    EXPECT_TRUE(key.primary);
    EXPECT_TRUE(key.unique);
    ASSERT_EQ(key.fields.size(), 2U);
    EXPECT_EQ(key.fields[0].name, "ProfileNumber");
    EXPECT_EQ(key.fields[1].name, "PropertyNumber");
    EXPECT_EQ(database->TableDefinition("tax_rates").indexes.Count(), 0U);
}

TEST_F(HouseholdDatabase, ADefinitionThatIsMissingIs3265) {
    EXPECT_ERROR(database->TableDefinition("Nothing"), ErrorNumber::kItemNotFound);
    EXPECT_ERROR(database->TableDefinition("Profiles").fields["Nothing"], ErrorNumber::kItemNotFound);
    EXPECT_ERROR(database->TableDefinition("Profiles").indexes["Nothing"], ErrorNumber::kItemNotFound);
}

TEST_F(HouseholdDatabase, RowsAreCounted) {
    EXPECT_EQ(database->CountRows("ProfileProperty"), 7U);
    EXPECT_ERROR(database->CountRows("Nothing"), ErrorNumber::kItemNotFound);
}

TEST(Database, NullsAreRead) {
    const auto database = Open("household-nulls.mdb");
    EXPECT_EQ(Column(*database, "select profilenumber from profiles where incsalary is null"), Numbers({2}));
    EXPECT_EQ(Column(*database, "select incsalary from profiles where profilenumber = 2"),
              (std::vector<Variant>{Null{}}));
}

TEST(Database, ALinkedTableIsListedButNotRead) {
    const auto database = Open("household-clutter.mdb");
    std::string linked;
    for (const TableEntry& table : database->Tables())
        if (table.kind == TableEntry::Kind::kLinked)
            linked = table.name;
    ASSERT_FALSE(linked.empty());
    EXPECT_ERROR(database->OpenRecordset(linked), ErrorNumber::kFeatureNotAvailable);
}

TEST(Database, TextWithMemosOverSeveralPagesIsWhole) {
    const auto database = Open("household-clutter.mdb");
    std::size_t longest = 0;
    for (const TableEntry& table : database->Tables()) {
        if (table.kind != TableEntry::Kind::kUser)
            continue;
        for (const auto rows = database->OpenRecordset(table.name); !rows->Eof(); rows->MoveNext())
            for (std::size_t i = 0; i < rows->fields().Count(); ++i)
                if (rows->fields()[i].type == kMemo)
                    if (const auto* text = std::get_if<std::string>(&(*rows)[i]))
                        longest = std::max(longest, text->size());
    }
    EXPECT_GT(longest, 8000U);
}

TEST(Workspace, AMissingFileIs3024) {
    EXPECT_ERROR(DefaultWorkspace().OpenDatabase(LEDGIX_TEST_DATA "/mdb/none.mdb"), ErrorNumber::kDatabaseNotFound);
}

TEST(Workspace, AFileOfAnotherKindIs3343) {
    EXPECT_ERROR(DefaultWorkspace().OpenDatabase(LEDGIX_TEST_DATA "/mdb/household.json"),
                 ErrorNumber::kUnrecognizedFormat);
}

}  // namespace
}  // namespace ledgix::dao
