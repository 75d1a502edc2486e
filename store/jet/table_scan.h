#pragma once

#include <cstddef>
#include <vector>

#include "data_page.h"
#include "jet_types.h"
#include "row_reader.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

class DatabaseFile;

// Walks the live rows of a table: pages ascending, slots in order. A moved row appears in its home slot. Memory and
// time are bounded by the size of the file, whatever it holds. Error 3049 for damage, in every call.
class TableScan {
public:
    // Both must outlive the scan.
    TableScan(DatabaseFile& file, const TableDefinition& table);

    // Goes to the next live row; false at the end.
    bool Next();

    // Of the current row; see RowReader.
    RowId id() const { return reader_.id(); }
    bool IsNull(std::size_t column_position) const { return reader_.IsNull(column_position); }
    runtime::Variant Value(std::size_t column_position) { return reader_.Value(column_position); }

private:
    DatabaseFile& file_;
    const TableDefinition& table_;
    std::vector<PageNumber> pages_;
    std::size_t next_page_ = 0;
    DataPage page_;
    std::size_t next_slot_ = 0;
    RowReader reader_;
};

}  // namespace ledgix::jet
