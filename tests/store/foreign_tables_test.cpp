#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "cls_profiles.h"
#include "database.h"
#include "database_file.h"
#include "household_file.h"
#include "mdbtools_judge.h"
#include "process.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::store {
namespace {

const std::set<std::string> kOwnTables{"Profiles", "ProfileProperty", "Tax_Rates"};

// A file in which a household keeps tables of its own beside those of the program.
class ForeignTables : public testing::Test {
protected:
    // A start of the program, and a hundred saves.
    void UseTheProgram() {
        file.Open();
        UpgradeSchema(model::CheckDefaultTaxRates);
        model::clsProfiles profiles;
        profiles.Load();
        for (int round = 0; round < 50; ++round) {
            model::clsProfile& profile = round % 2 == 0 ? profiles.AddItem() : profiles.Item(std::size_t{1});
            profile.ProfileName = std::string(static_cast<std::size_t>(round), 'n');
            profile.Save();
            model::clsProperty& property = profile.AddProperty(profile.ProfileNumber);
            property.PropertyName = "Property " + std::to_string(round);
            property.Save();
        }
        file.Close();
        model::TaxRatesSeeded = false;
        EXPECT_EQ(messages.messages(), std::vector<test::MessageRecorder::Message>());
    }

    // The pages that define them.
    std::set<std::uint32_t> ForeignDefinitions() const {
        jet::DatabaseFile opened(file.path(), jet::OpenMode::kRead);
        const jet::ReadAccess access(opened);
        std::set<std::uint32_t> pages;
        for (const auto& entry : dao::DefaultWorkspace().OpenDatabase(file.path())->Tables()) {
            if (entry.kind == dao::TableEntry::Kind::kUser && !kOwnTables.contains(entry.name))
                pages.insert(opened.FindTable(entry.name).value().DefinitionPage());
        }
        return pages;
    }

    std::string Schema(const std::string& options) const {
        return test::OutputOfSuccess("mdb-schema " + options + " '" + file.path() + "' access");
    }

    test::HouseholdFile file{test::SampleContent("household-clutter.mdb")};
    test::MessageRecorder messages;
};

constexpr std::size_t kPageSize = 4096;

std::uint32_t Number(const std::string& bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i > 0; --i)
        number = number << 8 | static_cast<std::uint8_t>(bytes[offset + i - 1]);
    return number;
}

// Definition pages, and the data and index pages that name one of them as their owner.
bool BelongsTo(const std::set<std::uint32_t>& definitions, const std::string& bytes, std::size_t page) {
    constexpr char kData = 1;
    constexpr char kNode = 3;
    constexpr char kLeaf = 4;
    const char type = bytes[page * kPageSize];
    const bool owned = type == kData || type == kNode || type == kLeaf;
    return definitions.contains(owned ? Number(bytes, page * kPageSize + 4) : static_cast<std::uint32_t>(page));
}

TEST_F(ForeignTables, KeepEveryByteOfTheirPages) {
    const std::set<std::uint32_t> definitions = ForeignDefinitions();
    ASSERT_GE(definitions.size(), 4U);
    const std::string before = file.bytes();
    UseTheProgram();
    const std::string after = file.bytes();
    ASSERT_NE(after, before);
    int own = 0;
    for (std::size_t page = 0; page < before.size() / kPageSize; ++page) {
        if (!BelongsTo(definitions, before, page))
            continue;
        ++own;
        EXPECT_EQ(after.compare(page * kPageSize, kPageSize, before, page * kPageSize, kPageSize), 0) << page;
    }
    EXPECT_GT(own, 10);
}

TEST_F(ForeignTables, AreTheSameForMdbtoolsWithTheirIndexesAndRelations) {
    if (!test::HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    const auto tables = test::JudgeTables(file.path(), true);
    std::map<std::string, std::vector<nlohmann::json>> rows;
    std::map<std::string, std::string> schemas;
    const auto is_foreign = [](const std::string& table) {
        return !kOwnTables.contains(table) && table != "MSysObjects" && table != "MSysACEs";
    };
    const auto table_options = [](const std::string& table) { return "--indexes -T '" + table + "'"; };
    for (const std::string& table : tables) {
        if (is_foreign(table)) {
            rows[table] = test::JudgeRows(file.path(), table);
            schemas[table] = Schema(table_options(table));
        }
    }
    const std::string relations = Schema("--no-indexes --relations");
    UseTheProgram();
    EXPECT_EQ(test::JudgeTables(file.path(), true), tables);
    for (const auto& [table, held] : rows) {
        EXPECT_EQ(test::JudgeRows(file.path(), table), held) << table;
        EXPECT_EQ(Schema(table_options(table)), schemas[table]) << table;
    }
    EXPECT_EQ(Schema("--no-indexes --relations"), relations);
}

TEST_F(ForeignTables, DoNotKeepTheProgramFromItsOwn) {
    UseTheProgram();
    EXPECT_EQ(file.Rows("select * from ProfileProperty where PropertyName like 'Property *'").size(), 50U);
}

}  // namespace
}  // namespace ledgix::store
