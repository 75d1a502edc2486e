#include "schema_upgrade.h"

#include <gtest/gtest.h>

#include <chrono>

#include "cases.h"
#include "dao_transaction.h"
#include "database.h"
#include "household_builder.h"
#include "household_file.h"
#include "mdbtools_judge.h"
#include "tax_module.h"

namespace ledgix::store {
namespace {

using runtime::Date;
using runtime::Null;
using runtime::Variant;
using test::HouseholdFile;
using test::Json;
using Message = test::MessageRecorder::Message;
using Values = std::vector<Variant>;

const Message kNotUpdated{"The database was not updated successfully.  Try restarting this application.", 0,
                          "Vantreo Ledgix"};
constexpr char kAllProfiles[] = "select * from Profiles order by ProfileNumber";
constexpr char kAllProperties[] = "select * from ProfileProperty order by ProfileNumber, PropertyNumber";

Json SchemaCases() {
    return test::LoadCases("schema.json");
}

// What a start of the program does to the file.
class Upgrading {
protected:
    ~Upgrading() { model::TaxRatesSeeded = false; }

    void Start(const HouseholdFile& file) {
        file.Open();
        UpgradeSchema(model::CheckDefaultTaxRates);
        file.Close();
    }

    test::TemporaryFolder folder;
    test::ScopedEnvironment application{"LEDGIX_FOLDER", folder.path()};
    test::MessageRecorder messages;
    test::DiagnosisRecorder diagnoses;
};

class NewFile : public Upgrading, public testing::TestWithParam<dao::FileFormat> {
protected:
    HouseholdFile file{test::EmptyContent(GetParam())};
};

Json ColumnsOf(const dao::TableDef& table) {
    Json columns = Json::array();
    for (const dao::Field& field : table.fields) {
        const int size = field.type == dao::kText ? field.size : 0;
        columns.push_back({{"name", field.name}, {"type", static_cast<int>(field.type)}, {"size", size}});
    }
    return columns;
}

Json WantedColumns(const Json& table) {
    Json columns = Json::array();
    for (const Json& column : table.at("columns"))
        columns.push_back({{"name", column.at("name")}, {"type", column.at("type")}, {"size", column.at("size")}});
    return columns;
}

// Null for a table without indexes.
Json KeyOf(const dao::TableDef& table) {
    Json key;
    for (const dao::Index& index : table.indexes) {
        EXPECT_EQ(index.name, "PrimaryKey");
        EXPECT_TRUE(index.primary && index.unique && !index.ignore_nulls);
        for (const dao::IndexField& field : index.fields) {
            EXPECT_FALSE(field.descending);
            key.push_back(field.name);
        }
    }
    return key;
}

TEST_P(NewFile, GainsAllTablesAndKeysAndShowsNoMessage) {
    Start(file);
    EXPECT_EQ(messages.messages(), std::vector<Message>());
    const auto database = dao::DefaultWorkspace().OpenDatabase(file.path());
    std::vector<std::string> names;
    for (const dao::TableEntry& entry : database->Tables()) {
        if (entry.kind == dao::TableEntry::Kind::kUser)
            names.push_back(entry.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Profiles", "ProfileProperty", "Tax_Rates"}));
    const Json wanted = SchemaCases();
    for (const Json& table : wanted.at("tables")) {
        const auto name = table.at("table").get<std::string>();
        const dao::TableDef stored = database->TableDefinition(name);
        EXPECT_EQ(stored.name, name);
        EXPECT_EQ(ColumnsOf(stored), WantedColumns(table));
        EXPECT_EQ(KeyOf(stored), table.at("primaryKey"));
        for (const dao::Field& field : stored.fields)
            EXPECT_EQ(field.attributes & dao::kAutoIncrementField, 0) << field.name;
    }
}

TEST_P(NewFile, GainsTheDefaultTaxBrackets) {
    Start(file);
    EXPECT_TRUE(model::TaxRatesSeeded);
    Json held = Json::array();
    for (const Values& row : file.Rows("select upper, rate from Tax_Rates"))
        held.push_back({{"upper", std::get<std::int32_t>(row[0])}, {"rate", std::get<float>(row[1])}});
    EXPECT_EQ(held, SchemaCases().at("defaultTaxRates"));
}

TEST_P(NewFile, IsTheSameByteForByteAfterTheSecondStart) {
    Start(file);
    model::TaxRatesSeeded = false;
    const std::string after_first = file.bytes();
    Start(file);
    EXPECT_EQ(file.bytes(), after_first);
    EXPECT_FALSE(model::TaxRatesSeeded);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_P(NewFile, IsReadByMdbtools) {
    if (!test::HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    Start(file);
    EXPECT_EQ(test::JudgeTables(file.path(), false),
              (std::vector<std::string>{"Profiles", "ProfileProperty", "Tax_Rates"}));
    EXPECT_TRUE(test::JudgeRows(file.path(), "Profiles").empty());
    const std::vector<Json> brackets{
        {{"upper", 38000}, {"rate", 19.5}}, {{"upper", 60000}, {"rate", 33}}, {{"upper", 0}, {"rate", 39}}};
    EXPECT_EQ(test::JudgeRows(file.path(), "Tax_Rates"), brackets);
}

TEST_P(NewFile, TakesRecordsRightAway) {
    Start(file);
    file.Open();
    model::clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ProfileName = "First";
    profile.Save();
    file.Close();
    EXPECT_EQ(file.Column("select profile_name from Profiles"), Values{std::string("First")});
    EXPECT_TRUE(messages.messages().empty());
}

INSTANTIATE_TEST_SUITE_P(Formats, NewFile, testing::ValuesIn(test::kBothFormats), test::FormatName);

class OlderFile : public Upgrading, public testing::Test {
protected:
    HouseholdFile file{test::SampleContent("household-older.mdb")};
};

TEST_F(OlderFile, GainsColumnsWithTheirDefaultsInEveryRow) {
    const std::size_t profiles = file.Rows(kAllProfiles).size();
    const std::size_t properties = file.Rows(kAllProperties).size();
    ASSERT_GT(profiles, 1U);
    ASSERT_GT(properties, 1U);
    Start(file);
    EXPECT_EQ(file.Column("select PriceIncreases from ProfileProperty"), Values(properties, 3.5));
    EXPECT_EQ(file.Column("select ExpFees from ProfileProperty"), Values(properties, 0.0));
    EXPECT_EQ(file.Column("select expRepair from ProfileProperty"), Values(properties, 0.0));
    EXPECT_EQ(file.Column("select IncDividends from Profiles"), Values(profiles, 0.0));
    EXPECT_EQ(file.Column("select last_modified from Profiles"), Values(profiles, Date{2}));
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(OlderFile, KeepsTheValuesThatItHas) {
    const auto profiles_before = file.Rows(kAllProfiles);
    const auto properties_before = file.Rows(kAllProperties);
    Start(file);
    const auto expect_kept = [](const auto& before, const auto& after) {
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_GT(after[i].size(), before[i].size());
            EXPECT_EQ(Values(after[i].begin(), after[i].begin() + static_cast<std::ptrdiff_t>(before[i].size())),
                      before[i]);
        }
    };
    expect_kept(profiles_before, file.Rows(kAllProfiles));
    expect_kept(properties_before, file.Rows(kAllProperties));
    EXPECT_EQ(file.Column("select upper from Tax_Rates"), (Values{38000, 60000, 0}));
    EXPECT_FALSE(model::TaxRatesSeeded);
}

TEST_F(OlderFile, GainsItsPrimaryKeys) {
    Start(file);
    const auto database = dao::DefaultWorkspace().OpenDatabase(file.path());
    EXPECT_EQ(KeyOf(database->TableDefinition("Profiles")), Json({"ProfileNumber"}));
    EXPECT_EQ(KeyOf(database->TableDefinition("ProfileProperty")), Json({"ProfileNumber", "PropertyNumber"}));
}

TEST_F(OlderFile, ReadsWithMdbtoolsAsWithUs) {
    if (!test::HaveMdbtools())
        GTEST_SKIP() << "mdbtools is not installed";
    Start(file);
    for (const Json& row : test::JudgeRows(file.path(), "ProfileProperty"))
        EXPECT_EQ(row.at("PriceIncreases"), 3.5);
    for (const Json& row : test::JudgeRows(file.path(), "Profiles"))
        EXPECT_EQ(row.at("last_modified"), "1900-01-01T00:00:00");
}

TEST_F(OlderFile, IsTheSameByteForByteAfterTheSecondStart) {
    Start(file);
    const std::string after_first = file.bytes();
    Start(file);
    EXPECT_EQ(file.bytes(), after_first);
}

TEST_F(OlderFile, KeepsAnAddedColumnsValuesAtTheNextStart) {
    Start(file);
    file.Execute("update ProfileProperty set PriceIncreases = 7");
    Start(file);
    for (const Variant& increase : file.Column("select PriceIncreases from ProfileProperty"))
        EXPECT_EQ(increase, Variant(7.0));
}

TEST_F(OlderFile, ThatIsReadOnlyStaysAsItIsAndGetsOneMessage) {
    const std::string before = file.bytes();
    file.OpenReadOnly();
    UpgradeSchema(model::CheckDefaultTaxRates);
    EXPECT_EQ(messages.messages(), std::vector<Message>{kNotUpdated});
    EXPECT_EQ(file.bytes(), before);
}

// A file as it is before a start, and what the start leaves.
class AnyFile : public Upgrading, public testing::Test {};

TEST_F(AnyFile, OfTheCurrentLayoutIsNotTouched) {
    for (const char* sample : {"household-2000.mdb", "household-nulls.mdb"}) {
        const HouseholdFile file(test::SampleContent(sample));
        Start(file);
        const std::string after_first = file.bytes();
        Start(file);
        EXPECT_EQ(file.bytes(), after_first) << sample;
        EXPECT_TRUE(messages.messages().empty()) << sample;
    }
}

TEST_F(AnyFile, WithAMissingPrimaryKeyGainsIt) {
    const auto content = test::HouseholdBuilder().AddProfile(4, Json::object()).AddProfile(2, Json::object()).Finish();
    const HouseholdFile file(content);
    Start(file);
    EXPECT_TRUE(messages.messages().empty());
    EXPECT_EQ(KeyOf(dao::DefaultWorkspace().OpenDatabase(file.path())->TableDefinition("Profiles")),
              Json({"ProfileNumber"}));
    EXPECT_EQ(file.Column("select ProfileNumber from Profiles where ProfileNumber = 2"), Values{2});
}

TEST_F(AnyFile, WithANumberTwiceGetsOneMessageNoKeyAndAllTheRest) {
    const auto content = test::HouseholdBuilder().AddProfile(4, Json::object()).AddProfile(4, Json::object()).Finish();
    const HouseholdFile file(content);
    Start(file);
    EXPECT_EQ(messages.messages(), std::vector<Message>{kNotUpdated});
    const auto database = dao::DefaultWorkspace().OpenDatabase(file.path());
    EXPECT_EQ(KeyOf(database->TableDefinition("Profiles")), Json());
    EXPECT_EQ(KeyOf(database->TableDefinition("ProfileProperty")), Json({"ProfileNumber", "PropertyNumber"}));
    EXPECT_EQ(database->CountRows("Profiles"), 2U);
    EXPECT_EQ(database->CountRows("Tax_Rates"), 3U);
}

TEST_F(AnyFile, WithANumberTwiceIsTheSameByteForByteAfterTheSecondStart) {
    const auto content = test::HouseholdBuilder().AddProfile(4, Json::object()).AddProfile(4, Json::object()).Finish();
    const HouseholdFile file(content);
    Start(file);
    const std::string after_first = file.bytes();
    Start(file);
    EXPECT_EQ(file.bytes(), after_first);
    EXPECT_EQ(messages.messages().size(), 2U);
}

TEST_F(AnyFile, WithoutSomeTablesGainsThem) {
    const HouseholdFile file(test::EmptyContent(dao::FileFormat::kJet4));
    file.Open();
    ASSERT_TRUE(CreateTable("ProfileProperty", "PurchasePrice", "5", dao::kDouble, 0, 1));
    Start(file);
    EXPECT_TRUE(messages.messages().empty());
    const auto database = dao::DefaultWorkspace().OpenDatabase(file.path());
    EXPECT_TRUE(database->HasTable("Profiles"));
    EXPECT_EQ(database->TableDefinition("ProfileProperty").fields.Count(), 21U);
    EXPECT_EQ(file.Rows("select PurchasePrice, ProfileNumber, PropertyNumber, PriceIncreases from ProfileProperty"),
              (std::vector<Values>{{5.0, 0, 0, 3.5}}));
}

TEST_F(AnyFile, ThatAnotherMakerMadeEmptyGainsAll) {
    const HouseholdFile file(test::SampleContent("household-empty.mdb"));
    Start(file);
    EXPECT_TRUE(messages.messages().empty());
    EXPECT_EQ(file.Rows(kAllProfiles).size(), 0U);
    EXPECT_EQ(file.Column("select upper from Tax_Rates"), (Values{38000, 60000, 0}));
}

TEST_F(AnyFile, ThatIsNotOpenGetsItsMessageBehindThoseOfTheSeeding) {
    UpgradeSchema(model::CheckDefaultTaxRates);
    ASSERT_GT(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages().back(), kNotUpdated);
    for (std::size_t i = 0; i + 1 < messages.messages().size(); ++i)
        EXPECT_EQ(messages.messages()[i].text.substr(0, 24), "General Errors...\r\n\r\n91 ");
    EXPECT_FALSE(model::TaxRatesSeeded);
}

TEST_F(AnyFile, ThatIsNotOpenIsSeededAllTheSame) {
    int seeded = 0;
    UpgradeSchema([&] { ++seeded; });
    EXPECT_EQ(seeded, 1);
    EXPECT_EQ(messages.messages(), std::vector<Message>{kNotUpdated});
}

TEST_F(AnyFile, IsSeededOnceWhenItIsUpToDate) {
    const HouseholdFile file(test::SampleContent("household-2000.mdb"));
    file.Open();
    int seeded = 0;
    UpgradeSchema([&] { ++seeded; });
    EXPECT_EQ(seeded, 1);
}

TEST_F(AnyFile, ThatIsReadOnlyAndHasNoBracketsIsNotSeeded) {
    const HouseholdFile file(test::EmptyContent(dao::FileFormat::kJet4));
    file.OpenReadOnly();
    UpgradeSchema(model::CheckDefaultTaxRates);
    EXPECT_EQ(messages.messages().back(), kNotUpdated);
    EXPECT_FALSE(model::TaxRatesSeeded);
}

}  // namespace
}  // namespace ledgix::store
