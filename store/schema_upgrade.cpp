#include "schema_upgrade.h"

#include <memory>

#include "database.h"
#include "message_box.h"
#include "resume_next.h"
#include "runtime_error.h"
#include "schema.h"

namespace ledgix::store {

namespace {

using runtime::ErrorNumber;

constexpr std::string_view kPrimaryKey = "PrimaryKey";
constexpr std::int16_t kNoRow = 0;

// Runs one step; false when it fails.
template <class Step>
bool Succeeds(Step&& step) {
    return runtime::ResumeNext(std::forward<Step>(step), [](const runtime::RuntimeError&) {});
}

// Only the one error says that something is missing; any other is taken to mean that it is there.
template <class LookUp>
bool IsMissing(LookUp&& look_up) {
    bool missing = false;
    runtime::ResumeNext(std::forward<LookUp>(look_up),
                        [&](const runtime::RuntimeError& error) { missing = error.Is(ErrorNumber::kItemNotFound); });
    return missing;
}

dao::Field MakeField(std::string_view name, std::int16_t type, std::int16_t size) {
    dao::Field field;
    field.name = name;
    field.type = static_cast<dao::FieldType>(type);
    field.size = size;
    return field;
}

bool Execute(const std::string& statement) {
    return Succeeds([&] { gDatabase->Execute(statement); });
}

bool UpgradeTable(const SchemaTable& table) {
    const SchemaColumn& first = table.columns.front();
    const auto size_of = [](const SchemaColumn& column) { return static_cast<std::int16_t>(column.size); };
    bool success = CreateTable(table.name, first.name, first.fill_default, first.type, size_of(first), kNoRow);
    for (const SchemaColumn& column : table.columns)
        success = AddColumn(table.name, column.name, column.fill_default, column.type, size_of(column)) && success;
    if (table.primary_key.empty())
        return success;
    const auto part = [&](std::size_t i) { return i < table.primary_key.size() ? table.primary_key[i] : ""; };
    return CreateIndex(table.name, kPrimaryKey, part(0), part(1), part(2)) && success;
}

bool HasPrimaryKey(const SchemaTable& table) {
    return table.primary_key.empty() || gDatabase->TableDefinition(table.name).indexes.Contains(kPrimaryKey);
}

bool IsUpToDate() {
    for (const SchemaTable* table : {&ProfilesTable(), &ProfilePropertyTable(), &TaxRatesTable()}) {
        if (!MissingFrom(*gDatabase, *table).empty() || !HasPrimaryKey(*table))
            return false;
    }
    return true;
}

// One change of the file when that can be had, so that a new file does not wait for the disk some fifty times.
bool UpgradeTables() {
    if (!gDatabase)
        return false;
    bool up_to_date = false;
    Succeeds([&] { up_to_date = IsUpToDate(); });
    if (up_to_date)
        return true;
    const std::unique_ptr<dao::Transaction> change = BeginChange();
    bool success = true;
    for (const SchemaTable* table : {&ProfilesTable(), &ProfilePropertyTable(), &TaxRatesTable()})
        success = UpgradeTable(*table) && success;
    const bool committed = !change || Succeeds([&] { change->Commit(); });
    return committed && success;
}

}  // namespace

bool CreateTable(std::string_view table, std::string_view column, std::string_view fill_default, std::int16_t type,
                 std::int16_t size, std::int16_t insert_row) {
    if (!gDatabase)
        return false;
    if (!IsMissing([&] { gDatabase->TableDefinition(table); }))
        return true;
    const std::string name(table);
    const std::string first(column);
    bool success = Succeeds([&] {
        dao::TableDef definition;
        definition.name = name;
        definition.fields = dao::Collection<dao::Field>({MakeField(column, type, size)});
        gDatabase->CreateTable(definition);
    });
    const std::string value(fill_default);
    if (insert_row != 0)
        success = Execute("Insert into " + name + " (" + first + ") values (" + value + ")") && success;
    else
        success = Execute("update " + name + " set " + first + " = " + value) && success;
    return success;
}

bool AddColumn(std::string_view table, std::string_view column, std::string_view fill_default, std::int16_t type,
               std::int16_t size) {
    if (!gDatabase)
        return false;
    if (!IsMissing([&] { static_cast<void>(gDatabase->TableDefinition(table).fields[column]); }))
        return true;
    const bool added = Succeeds([&] { gDatabase->AppendField(table, MakeField(column, type, size)); });
    const bool filled =
        Execute("update " + std::string(table) + " set [" + std::string(column) + "] = " + std::string(fill_default));
    return added && filled;
}

bool CreateIndex(std::string_view table, std::string_view index, std::string_view column1, std::string_view column2,
                 std::string_view column3) {
    if (!gDatabase)
        return false;
    if (!IsMissing([&] { static_cast<void>(gDatabase->TableDefinition(table).indexes[index]); }))
        return true;
    return Succeeds([&] {
        dao::Index key;
        key.name = index;
        key.primary = true;
        key.unique = true;
        for (const std::string_view column : {column1, column2, column3}) {
            if (!column.empty())
                key.fields.push_back({std::string(column)});
        }
        gDatabase->AppendIndex(table, key);
    });
}

void UpgradeSchema(const SeedTaxRates& seed) {
    const bool success = UpgradeTables();
    seed();
    if (!success)
        runtime::MsgBox("The database was not updated successfully.  Try restarting this application.");
}

}  // namespace ledgix::store
