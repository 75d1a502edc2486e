#include "household_builder.h"

#include <string>
#include <utility>

#include "database.h"
#include "database_builder.h"
#include "database_file.h"
#include "page_file.h"
#include "schema.h"

namespace ledgix::test {

namespace {

using runtime::Variant;

ColumnSpec SpecOf(const store::SchemaColumn& column) {
    ColumnSpec spec;
    spec.name = std::string(column.name);
    spec.type = static_cast<jet::ColumnType>(column.type);
    if (column.type == dao::kText)
        spec.characters = static_cast<std::size_t>(column.size);
    return spec;
}

std::vector<ColumnSpec> SpecsOf(const store::SchemaTable& table) {
    std::vector<ColumnSpec> specs;
    for (const store::SchemaColumn& column : table.columns)
        specs.push_back(SpecOf(column));
    return specs;
}

Variant NumberOf(dao::FieldType type, double number) {
    switch (type) {
        case dao::kInteger:
            return static_cast<std::int16_t>(number);
        case dao::kLong:
            return static_cast<std::int32_t>(number);
        case dao::kSingle:
            return static_cast<float>(number);
        case dao::kDate:
            return runtime::Date{number};
        default:
            return number;
    }
}

// What the member's value is in a column; null stands for Null, a missing member for 0, empty or false.
Variant ValueOf(const store::SchemaColumn& column, const Json& fields, const std::string& member) {
    const Json value = fields.contains(member) ? fields.at(member) : Json(0);
    if (value.is_null())
        return runtime::Null{};
    if (column.type == dao::kText)
        return value.is_string() ? value.get<std::string>() : std::string();
    if (column.type == dao::kBoolean)
        return value.is_boolean() && value.get<bool>();
    return NumberOf(column.type, value.get<double>());
}

// Records name some fields otherwise than their columns.
std::string MemberOf(std::string_view column) {
    const std::vector<std::pair<std::string_view, std::string>> kOtherNames{{"profile_name", "ProfileName"},
                                                                            {"Chattelvalue", "ChattelValue"},
                                                                            {"ExpFees", "Fees"},
                                                                            {"expRepair", "Repairs"}};
    for (const auto& [name, member] : kOtherNames)
        if (name == column)
            return member;
    return std::string(column);
}

Values RowOf(const store::SchemaTable& table, const Json& fields) {
    Values row;
    for (const store::SchemaColumn& column : table.columns) {
        const std::string own(column.name);
        row.push_back(ValueOf(column, fields, fields.contains(own) ? own : MemberOf(column.name)));
    }
    return row;
}

}  // namespace

struct HouseholdBuilder::Tables {
    DatabaseBuilder file{jet::Generation::kJet4};
    TableBuilder& profiles = file.AddTable("Profiles", SpecsOf(store::ProfilesTable()));
    TableBuilder& properties = file.AddTable("ProfileProperty", SpecsOf(store::ProfilePropertyTable()));
    TableBuilder& tax_rates = file.AddTable("Tax_Rates", SpecsOf(store::TaxRatesTable()));
};

HouseholdBuilder::HouseholdBuilder() : tables_(std::make_unique<Tables>()) {}
HouseholdBuilder::~HouseholdBuilder() = default;

HouseholdBuilder& HouseholdBuilder::AddProfile(std::int32_t number, const Json& fields) {
    Json row = fields;
    row["ProfileNumber"] = number;
    tables_->profiles.AddRow(RowOf(store::ProfilesTable(), row));
    return *this;
}

HouseholdBuilder& HouseholdBuilder::AddProperty(std::int32_t profile, std::int32_t number, const Json& fields) {
    Json row = fields;
    row["ProfileNumber"] = profile;
    row["PropertyNumber"] = number;
    tables_->properties.AddRow(RowOf(store::ProfilePropertyTable(), row));
    return *this;
}

HouseholdBuilder& HouseholdBuilder::AddTaxRates(const Json& brackets) {
    for (const Json& bracket : brackets)
        tables_->tax_rates.AddRow(RowOf(store::TaxRatesTable(), bracket));
    return *this;
}

std::vector<std::uint8_t> HouseholdBuilder::Finish() {
    return tables_->file.Finish();
}

InstalledDatabase::InstalledDatabase(std::vector<std::uint8_t> content) {
    store::gDatabase = std::make_unique<dao::Database>(
        "case.mdb", std::make_unique<jet::DatabaseFile>(jet::MakeMemoryFile(std::move(content))));
}

InstalledDatabase::InstalledDatabase(const std::string& path) {
    store::OpenDatabaseFile(path);
}

InstalledDatabase::~InstalledDatabase() {
    store::gDatabase.reset();
}

std::vector<std::uint8_t> CaseContent(const Json& test_case) {
    HouseholdBuilder builder;
    if (test_case.contains("profile"))
        builder.AddProfile(1, test_case.at("profile"));
    if (test_case.contains("property"))
        builder.AddProperty(1, 1, test_case.at("property"));
    return builder.AddTaxRates(test_case.at("TaxRates")).Finish();
}

model::clsProfile ProfileOf(const Json& fields) {
    const InstalledDatabase database(HouseholdBuilder().AddProfile(1, fields).Finish());
    model::clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    return profile;
}

model::clsProperty PropertyOf(const Json& fields) {
    const InstalledDatabase database(HouseholdBuilder().AddProperty(1, 1, fields).Finish());
    model::clsProfile profile;
    profile.ProfileNumber = 1;
    profile.LoadProperties();
    return std::move(profile.Property("P1-1"));
}

}  // namespace ledgix::test
