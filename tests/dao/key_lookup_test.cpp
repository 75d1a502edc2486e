#include "key_lookup.h"

#include <gtest/gtest.h>

#include "database_file.h"
#include "page_file.h"
#include "sql_parser.h"
#include "workspace.h"

namespace ledgix::dao {
namespace {

// How many rows an index leaves of a table for a condition; nothing when none is used.
std::optional<std::size_t> RowsLeft(const std::string& file_name, const std::string& table_name,
                                    const std::string& condition) {
    jet::DatabaseFile file(jet::OpenPageFile(LEDGIX_TEST_DATA "/mdb/" + file_name));
    const jet::TableDefinition table = file.ReadTableDefinition(file.FindTable(table_name)->DefinitionPage());
    const SelectStatement select = ParseSelect("select * from t where " + condition);
    VisitColumns(*select.where, [&](ColumnName& column) { column.position = *table.FindColumn(column.name); });
    const auto rows = LookUpByKey(file, table, *select.where);
    return rows ? std::optional(rows->size()) : std::nullopt;
}

constexpr auto kFile = "household-2000.mdb";

TEST(KeyLookup, FindsAPrimaryKey) {
    EXPECT_EQ(RowsLeft(kFile, "Profiles", "ProfileNumber = 2"), 1U);
    EXPECT_EQ(RowsLeft(kFile, "Profiles", "2 = ProfileNumber"), 1U);
    EXPECT_EQ(RowsLeft(kFile, "Profiles", "ProfileNumber = 3"), 0U);
}

TEST(KeyLookup, FindsByTheFirstColumnsOfAKey) {
    EXPECT_EQ(RowsLeft(kFile, "ProfileProperty", "ProfileNumber = 1"), 3U);
    EXPECT_EQ(RowsLeft(kFile, "ProfileProperty", "ProfileNumber = 1 and PropertyNumber = 2"), 1U);
    EXPECT_EQ(RowsLeft(kFile, "ProfileProperty", "PropertyNumber = 2 and Rates > 0 and ProfileNumber = 1"), 1U);
}

TEST(KeyLookup, NeedsTheFirstColumn) {
    EXPECT_FALSE(RowsLeft(kFile, "ProfileProperty", "PropertyNumber = 2").has_value());
}

TEST(KeyLookup, NeedsAnIndex) {
    EXPECT_FALSE(RowsLeft(kFile, "Tax_Rates", "upper = 0").has_value());
}

TEST(KeyLookup, NeedsEqualityWithAWholeNumber) {
    EXPECT_FALSE(RowsLeft(kFile, "Profiles", "ProfileNumber > 2").has_value());
    EXPECT_FALSE(RowsLeft(kFile, "Profiles", "ProfileNumber = 2.5").has_value());
    EXPECT_FALSE(RowsLeft(kFile, "Profiles", "ProfileNumber = ProfileNumber").has_value());
}

TEST(KeyLookup, IsOfNoUseWithOr) {
    EXPECT_FALSE(RowsLeft(kFile, "Profiles", "ProfileNumber = 2 or ProfileNumber = 4").has_value());
    EXPECT_FALSE(RowsLeft(kFile, "Profiles", "not ProfileNumber = 2").has_value());
}

// The names of all properties of a profile, in the order of the recordset.
std::vector<runtime::Variant> Names(Database& database, const std::string& condition) {
    std::vector<runtime::Variant> names;
    for (const auto rows = database.OpenRecordset("select PropertyName from ProfileProperty where " + condition);
         !rows->Eof(); rows->MoveNext())
        names.push_back((*rows)["PropertyName"]);
    return names;
}

TEST(KeyLookup, GivesTheSameRowsAsReadingAll) {
    for (const char* file : {"household-2000.mdb", "household-clutter.mdb", "household-older.mdb"}) {
        const auto database = DefaultWorkspace().OpenDatabase(std::string(LEDGIX_TEST_DATA "/mdb/") + file);
        for (const std::string number : {"0", "1", "2", "3", "4"})
            EXPECT_EQ(Names(*database, "ProfileNumber = " + number), Names(*database, "ProfileNumber + 0 = " + number));
    }
}

}  // namespace
}  // namespace ledgix::dao
