#include "matching_rows.h"

#include <optional>
#include <vector>

#include "database_file.h"
#include "key_lookup.h"
#include "row_reader.h"
#include "table_scan.h"

namespace ledgix::dao {

namespace {

// The current row of a scan or of a reader of single rows.
template <class Reader>
class ReaderRow : public Row {
public:
    explicit ReaderRow(Reader& reader) : reader_(reader) {}
    runtime::Variant Value(std::size_t position) const override { return reader_.Value(position); }

private:
    Reader& reader_;
};

}  // namespace

void VisitMatchingRows(jet::DatabaseFile& file, const jet::TableDefinition& table, const Expression* where,
                       const std::function<void(jet::RowId, const Row&)>& visit) {
    if (const std::optional<std::vector<jet::RowId>> found = where ? LookUpByKey(file, table, *where) : std::nullopt) {
        jet::RowReader reader(file, table);
        const ReaderRow row(reader);
        for (const jet::RowId& id : *found)
            if (reader.Load(id) && Holds(*where, row))
                visit(id, row);
        return;
    }
    jet::TableScan scan(file, table);
    for (const ReaderRow row(scan); scan.Next();)
        if (!where || Holds(*where, row))
            visit(scan.id(), row);
}

}  // namespace ledgix::dao
