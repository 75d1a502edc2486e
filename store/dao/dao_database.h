#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dao_constants.h"
#include "recordset.h"
#include "table_def.h"

namespace ledgix::jet {
class DatabaseFile;
struct CatalogEntry;
struct TableDefinition;
}  // namespace ledgix::jet

namespace ledgix::dao {

// An open database file. The file stays open for the life of the object.
class Database {
public:
    Database(std::string path, std::unique_ptr<jet::DatabaseFile> file);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& path() const { return path_; }
    // "Jet 3" or "Jet 4".
    std::string FormatName() const;
    int CodePage() const;

    // `source` is a select statement or the name of a table.
    // Errors: 3078 no such table, 3061 names that no column of the table bears, those of ParseSelect, 3049 a damaged
    // file, 3219 a type for tables used on a query, 3251 a linked table.
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type = kOpenDynaset,
                                             std::int16_t options = kNoOptions);

    // Every table of the catalogue, in the catalogue's order.
    std::vector<TableEntry> Tables();

    // The definition of a stored table, its name in any case. Errors: 3265 no such table.
    TableDef TableDefinition(std::string_view name);
    bool HasTable(std::string_view name);

    // The rows of a stored table, counted one by one. Errors: 3265 no such table.
    std::size_t CountRows(std::string_view name);

private:
    const jet::CatalogEntry& StoredTable(std::string_view name);
    const jet::CatalogEntry* FindTable(std::string_view name);
    const std::vector<jet::CatalogEntry>& Catalog();

    std::string path_;
    std::unique_ptr<jet::DatabaseFile> file_;
    std::vector<jet::CatalogEntry> catalog_;
    bool catalog_read_ = false;
};

}  // namespace ledgix::dao
