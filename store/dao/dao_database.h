#pragma once

#include <chrono>
#include <cstdint>
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
}  // namespace ledgix::jet

namespace ledgix::dao {

class SchemaCache;

// An open database file. The file stays open for the life of the object. Every call may raise 3260 when another
// program writes for too long, 3262 when one keeps others from the table, 3049 a damaged file, 3043 one that can't be
// read.
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
    // How long to wait for other programs; 5 seconds at first.
    void SetPatience(std::chrono::milliseconds patience);

    // `source` is a select statement or the name of a table. The options kDenyRead and kDenyWrite hold until the
    // recordset is closed. The database must outlive a recordset that may be edited or denies others something.
    // Errors: 3078 no such table, 3061 names that no column of the table bears, those of ParseSelect, 3219 a type for
    // tables used on a query, 3251 a linked table.
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, RecordsetType type = kOpenDynaset,
                                             std::int16_t options = kNoOptions);

    // Hands out the rows that a recordset on `source` would have, one by one and without keeping them. The file is held
    // for reading meanwhile, so `visit` must not change it. Errors as of OpenRecordset, and those of `visit`.
    void VisitRows(std::string_view source, const RowVisitor& visit);

    // Runs an insert, update or delete statement: whole or, when it fails, not at all. The result is the number of
    // rows that it touched. Errors: those of ParseAction and RunAction, 3078 no such table, 3251 a linked table, 3027
    // a system table or a file that may not be written.
    std::size_t Execute(std::string_view statement);
    // Of the last statement that did not fail.
    std::size_t RecordsAffected() const { return records_affected_; }

    // Every table of the catalogue, in the catalogue's order.
    std::vector<TableEntry> Tables();

    // The definition of a stored table, its name in any case. Errors: 3265 no such table.
    TableDef TableDefinition(std::string_view name);
    bool HasTable(std::string_view name);

    // The rows of a stored table, counted one by one. Errors: 3265 no such table.
    std::size_t CountRows(std::string_view name);

    // Changes of the schema, each whole or not at all. Of a field count name, type, the size of text (0 stands for
    // 255) and kAutoIncrementField; of an index all but `foreign`. A table may bring its indexes. Errors: 3265 no such
    // table, 3027 a system table or a file that may not be written, 3251 a linked table, and those of the functions
    // in jet/schema_writer.h.
    void CreateTable(const TableDef& table);
    void AppendField(std::string_view table, const Field& field);
    void AppendIndex(std::string_view table, const Index& index);

private:
    friend class Transaction;

    const jet::CatalogEntry& StoredTable(std::string_view name);
    const jet::CatalogEntry& QueriedTable(std::string_view name);
    const jet::CatalogEntry& TableToRedefine(std::string_view name);
    template <class Change>
    void ChangeSchema(std::string_view table, const Change& change);

    std::string path_;
    std::unique_ptr<jet::DatabaseFile> file_;
    std::unique_ptr<SchemaCache> schema_;
    std::size_t records_affected_ = 0;
};

}  // namespace ledgix::dao
