#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "jet_types.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

class DatabaseFile;

// Changes the rows of one table, with its long values and every index that it has. Only inside a Transaction; when a
// call fails, the transaction must be given up. Errors of every call: 3022 a key that a unique index holds already,
// 3058 Null in a key that may not be, 3047 a row that is too long, 3163 and 3421 values that the column does not take,
// 3251 text that can't be stored or indexed, 3026 no space, 3049 a damaged file.
class TableWriter {
public:
    // The file must outlive the writer. No other writer may change the table meanwhile.
    TableWriter(DatabaseFile& file, TableDefinition table);
    ~TableWriter();
    TableWriter(const TableWriter&) = delete;
    TableWriter& operator=(const TableWriter&) = delete;

    const TableDefinition& table() const;

    // values[i] is that of table().columns[i], of the column's own type or Null; text for memo, Binary for OLE.
    // Autonumber columns that are Null get the next number.
    RowId Insert(const std::vector<runtime::Variant>& values);

    struct Assignment {
        std::size_t column = 0;  // position
        runtime::Variant value;
    };
    // Columns that are not named keep their bytes. The row must be live; its home slot stays.
    void Update(RowId row, const std::vector<Assignment>& assignments);

    void Delete(RowId row);

private:
    class Work;
    std::unique_ptr<Work> work_;
};

}  // namespace ledgix::jet
