#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "jet_types.h"
#include "sql_parser.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::dao {

class SchemaCache;

// Error 3167.
[[noreturn]] void RaiseRecordDeleted();

// The fields of a row while it is edited.
struct RowEdit {
    std::vector<runtime::Variant> values;
    std::vector<bool> assigned;
};

// The table behind a recordset that may be edited, and what the recordset shows of it. Each change is a transaction of
// its own; its errors leave the table as it was: 3197 the row is not any more what the recordset read, 3167 it is
// gone, those of jet::TableWriter, jet::Transaction and jet::TableLock.
class RowSource {
public:
    // The items are bound to the table. The schema must outlive this.
    RowSource(SchemaCache& schema, std::string table_name, std::shared_ptr<const jet::TableDefinition> table,
              std::vector<SelectItem> items);

    // The column that a field shows; null for a calculated one.
    const jet::Column* ColumnOf(std::size_t field) const;
    // What the fields of a new row hold before anything is assigned.
    std::vector<runtime::Variant> BlankRow() const;

    struct StoredRow {
        jet::RowId id;
        std::vector<runtime::Variant> values;
    };
    StoredRow Append(const RowEdit& edit);
    // `read` are the values that the recordset read. The result are those that the row has afterwards.
    std::vector<runtime::Variant> Change(jet::RowId id, std::span<const runtime::Variant> read, const RowEdit& edit);
    void Remove(jet::RowId id, std::span<const runtime::Variant> read);

private:
    class Access;

    void LearnDefinition();

    SchemaCache& schema_;
    std::string table_name_;
    std::shared_ptr<const jet::TableDefinition> table_;  // as it was when the recordset was opened
    std::vector<SelectItem> items_;
    std::shared_ptr<const jet::TableDefinition> current_;  // as it is now
    std::vector<std::size_t> positions_;                   // in current_, of the columns of table_
};

}  // namespace ledgix::dao
