#include "dao_database.h"

#include <utility>
#include <variant>

#include "access.h"
#include "action_query.h"
#include "database_file.h"
#include "field_mapping.h"
#include "runtime_error.h"
#include "schema_cache.h"
#include "schema_writer.h"
#include "select_query.h"
#include "sql_parser.h"
#include "table_scan.h"

namespace ledgix::dao {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;

namespace {

TableEntry::Kind KindOf(const jet::CatalogEntry& entry) {
    if (entry.IsLinkedTable())
        return TableEntry::Kind::kLinked;
    return entry.IsUserTable() ? TableEntry::Kind::kUser : TableEntry::Kind::kSystem;
}

[[noreturn]] void RaiseNoSuchItem(std::string_view name) {
    RaiseEngineError(ErrorNumber::kItemNotFound, "Item not found in this collection: " + std::string(name));
}

void CheckNotLinked(const jet::CatalogEntry& entry) {
    if (!entry.IsTable())
        RaiseEngineError(ErrorNumber::kFeatureNotAvailable,
                         "The table '" + entry.name + "' is linked from another file and is not read.");
}

void CheckChangeable(const jet::CatalogEntry& entry) {
    CheckNotLinked(entry);
    if (entry.IsSystemTable())
        RaiseEngineError(ErrorNumber::kDatabaseReadOnly, "Cannot update. Database or object is read-only.");
}

SelectStatement ToStatement(std::string_view source, RecordsetType type) {
    SelectStatement statement;
    if (!IsSelect(source)) {
        statement.table = statement.alias = std::string(source);
        return statement;
    }
    statement = ParseSelect(source);
    if (type == kOpenTable)
        RaiseEngineError(ErrorNumber::kInvalidOperationForType, "A table-type recordset cannot be opened on a query.");
    return statement;
}

std::vector<std::unique_ptr<jet::TableLock>> LocksFor(jet::DatabaseFile& file, std::string_view table,
                                                      std::int16_t options) {
    std::vector<std::unique_ptr<jet::TableLock>> locks;
    if ((options & kDenyRead) != 0)
        locks.push_back(std::make_unique<jet::TableLock>(file, table, jet::TableUse::kDenyRead));
    if ((options & kDenyWrite) != 0)
        locks.push_back(std::make_unique<jet::TableLock>(file, table, jet::TableUse::kDenyWrite));
    return locks;
}

}  // namespace

Database::Database(std::string path, std::unique_ptr<jet::DatabaseFile> file)
    : path_(std::move(path)), file_(std::move(file)), schema_(std::make_unique<SchemaCache>(*file_)) {}

Database::~Database() = default;

std::string Database::FormatName() const {
    return file_->generation() == jet::Generation::kJet3 ? "Jet 3" : "Jet 4";
}

int Database::CodePage() const {
    return file_->code_page();
}

void Database::SetPatience(std::chrono::milliseconds patience) {
    file_->SetPatience(patience);
}

bool Database::HasTable(std::string_view name) {
    const jet::ReadAccess access(*file_);
    return schema_->FindTable(name) != nullptr;
}

std::vector<TableEntry> Database::Tables() {
    const jet::ReadAccess access(*file_);
    std::vector<TableEntry> tables;
    for (const jet::CatalogEntry& entry : schema_->Catalog())
        if (entry.IsTable() || entry.IsLinkedTable())
            tables.push_back({entry.name, KindOf(entry)});
    return tables;
}

const jet::CatalogEntry& Database::StoredTable(std::string_view name) {
    const jet::CatalogEntry* entry = schema_->FindTable(name);
    if (!entry || !entry->IsTable())
        RaiseNoSuchItem(name);
    return *entry;
}

const jet::CatalogEntry& Database::QueriedTable(std::string_view name) {
    const jet::CatalogEntry* entry = schema_->FindTable(name);
    if (!entry)
        RaiseEngineError(ErrorNumber::kTableNotFound,
                         "The engine cannot find the input table '" + std::string(name) + "'.");
    CheckNotLinked(*entry);
    return *entry;
}

std::size_t Database::CountRows(std::string_view name) {
    const jet::ReadAccess access(*file_);
    const auto table = schema_->Definition(StoredTable(name).DefinitionPage());
    std::size_t count = 0;
    for (jet::TableScan scan(*file_, *table); scan.Next();)
        ++count;
    return count;
}

TableDef Database::TableDefinition(std::string_view name) {
    const jet::ReadAccess access(*file_);
    const jet::CatalogEntry& entry = StoredTable(name);
    const jet::TableDefinition table = file_->ReadTableDefinition(entry.DefinitionPage());
    Collection<Index> indexes;
    for (const jet::Index& index : table.indexes)
        indexes.Append(IndexOf(index, table));
    return {entry.name, FieldsOf(table), std::move(indexes), table.row_count};
}

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view source, RecordsetType type, std::int16_t options) {
    SelectStatement statement = ToStatement(source, type);
    const jet::TableLock reading(*file_, statement.table, jet::TableUse::kRead);
    std::vector<std::unique_ptr<jet::TableLock>> locks = LocksFor(*file_, statement.table, options);
    const jet::ReadAccess access(*file_);
    const jet::CatalogEntry& entry = QueriedTable(statement.table);
    const bool updatable =
        (type == kOpenTable || type == kOpenDynaset) && (options & kReadOnly) == 0 && entry.IsUserTable();
    std::unique_ptr<Recordset> recordset =
        RunSelect(*schema_, schema_->Definition(entry.DefinitionPage()), std::move(statement), type, updatable);
    recordset->Hold(std::move(locks));
    return recordset;
}

void Database::VisitRows(std::string_view source, const RowVisitor& visit) {
    SelectStatement statement = ToStatement(source, kOpenForwardOnly);
    const jet::TableLock reading(*file_, statement.table, jet::TableUse::kRead);
    const jet::ReadAccess access(*file_);
    const auto table = schema_->Definition(QueriedTable(statement.table).DefinitionPage());
    VisitSelected(*file_, *table, std::move(statement), visit);
}

std::size_t Database::Execute(std::string_view statement) {
    ActionStatement action = ParseAction(statement);
    const std::string table = std::visit([](const auto& one) { return one.table; }, action);
    const jet::TableLock writing(*file_, table, jet::TableUse::kWrite);
    jet::Transaction transaction(*file_);
    const jet::CatalogEntry& entry = QueriedTable(table);
    CheckChangeable(entry);
    const std::size_t affected = RunAction(*file_, *schema_->Definition(entry.DefinitionPage()), std::move(action));
    transaction.Commit();
    records_affected_ = affected;
    return affected;
}

template <class Change>
void Database::ChangeSchema(std::string_view table, const Change& change) {
    const jet::TableLock writing(*file_, table, jet::TableUse::kWrite);
    jet::Transaction transaction(*file_);
    change();
    schema_->Forget();
    transaction.Commit();
}

const jet::CatalogEntry& Database::TableToRedefine(std::string_view name) {
    const jet::CatalogEntry* entry = schema_->FindTable(name);
    if (!entry)
        RaiseNoSuchItem(name);
    CheckChangeable(*entry);
    return *entry;
}

void Database::CreateTable(const TableDef& table) {
    ChangeSchema(table.name, [&] {
        std::vector<jet::NewColumn> columns;
        for (const Field& field : table.fields)
            columns.push_back(NewColumnOf(field));
        jet::TableDefinition stored = jet::CreateTable(*file_, table.name, columns);
        for (const Index& index : table.indexes)
            stored = jet::CreateIndex(*file_, stored, NewIndexOf(index));
    });
}

void Database::AppendField(std::string_view table, const Field& field) {
    ChangeSchema(table, [&] {
        const jet::PageNumber page = TableToRedefine(table).DefinitionPage();
        jet::AddColumn(*file_, file_->ReadTableDefinition(page), NewColumnOf(field));
    });
}

void Database::AppendIndex(std::string_view table, const Index& index) {
    ChangeSchema(table, [&] {
        const jet::PageNumber page = TableToRedefine(table).DefinitionPage();
        jet::CreateIndex(*file_, file_->ReadTableDefinition(page), NewIndexOf(index));
    });
}

}  // namespace ledgix::dao
