#include "dao_database.h"

#include <utility>

#include "database_file.h"
#include "runtime_error.h"
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

Index IndexOf(const jet::Index& stored, const jet::TableDefinition& table) {
    Index index{stored.name,       {}, stored.primary, stored.unique, stored.required, stored.ignore_nulls,
                stored.is_relation};
    for (const jet::IndexColumn& column : stored.columns)
        if (const std::optional<std::size_t> position = table.FindColumnByNumber(column.column_number))
            index.fields.push_back({table.columns[*position].name, !column.ascending});
    return index;
}

}  // namespace

Database::Database(std::string path, std::unique_ptr<jet::DatabaseFile> file)
    : path_(std::move(path)), file_(std::move(file)) {}

Database::~Database() = default;

std::string Database::FormatName() const {
    return file_->generation() == jet::Generation::kJet3 ? "Jet 3" : "Jet 4";
}

int Database::CodePage() const {
    return file_->code_page();
}

const std::vector<jet::CatalogEntry>& Database::Catalog() {
    if (!catalog_read_) {
        catalog_ = file_->ReadCatalog();
        catalog_read_ = true;
    }
    return catalog_;
}

const jet::CatalogEntry* Database::FindTable(std::string_view name) {
    return jet::FindTable(Catalog(), name);
}

bool Database::HasTable(std::string_view name) {
    return FindTable(name) != nullptr;
}

std::vector<TableEntry> Database::Tables() {
    std::vector<TableEntry> tables;
    for (const jet::CatalogEntry& entry : Catalog())
        if (entry.IsTable() || entry.IsLinkedTable())
            tables.push_back({entry.name, KindOf(entry)});
    return tables;
}

const jet::CatalogEntry& Database::StoredTable(std::string_view name) {
    const jet::CatalogEntry* entry = FindTable(name);
    if (!entry || !entry->IsTable())
        RaiseEngineError(ErrorNumber::kItemNotFound, "Item not found in this collection: " + std::string(name));
    return *entry;
}

std::size_t Database::CountRows(std::string_view name) {
    const jet::TableDefinition table = file_->ReadTableDefinition(StoredTable(name).DefinitionPage());
    std::size_t count = 0;
    for (jet::TableScan scan(*file_, table); scan.Next();)
        ++count;
    return count;
}

TableDef Database::TableDefinition(std::string_view name) {
    const jet::CatalogEntry& entry = StoredTable(name);
    const jet::TableDefinition table = file_->ReadTableDefinition(entry.DefinitionPage());
    std::vector<Index> indexes;
    for (const jet::Index& index : table.indexes)
        indexes.push_back(IndexOf(index, table));
    return {entry.name, FieldsOf(table), Collection<Index>(std::move(indexes)), table.row_count};
}

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view source, RecordsetType type, std::int16_t) {
    const bool query = IsSelect(source);
    SelectStatement statement;
    if (query)
        statement = ParseSelect(source);
    else
        statement.table = statement.alias = std::string(source);
    if (query && type == kOpenTable)
        RaiseEngineError(ErrorNumber::kInvalidOperationForType, "A table-type recordset cannot be opened on a query.");
    const jet::CatalogEntry* entry = FindTable(statement.table);
    if (!entry)
        RaiseEngineError(ErrorNumber::kTableNotFound,
                         "The engine cannot find the input table '" + statement.table + "'.");
    if (!entry->IsTable())
        RaiseEngineError(ErrorNumber::kFeatureNotAvailable,
                         "The table '" + entry->name + "' is linked from another file and is not read.");
    return RunSelect(*file_, file_->ReadTableDefinition(entry->DefinitionPage()), std::move(statement), type);
}

}  // namespace ledgix::dao
