#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "data_page.h"
#include "jet_types.h"
#include "long_value.h"
#include "row_view.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

class DatabaseFile;

// Gives the values of one row of a table at a time. Error 3049 for damage, in every call.
class RowReader {
public:
    // Both must outlive the reader.
    RowReader(DatabaseFile& file, const TableDefinition& table);

    // Makes the live row with this home slot the current one; false when it is deleted, was never there or is the
    // hidden part of a moved row. The page must belong to the table.
    bool Load(RowId home);

    // The same for a page at hand. All rows loaded in this way together may have as many bytes of long values as the
    // file: rows have none in common, so a sound table never has more.
    bool Load(const DataPage& page, std::uint8_t slot);

    // Of the current row.
    RowId id() const { return id_; }
    bool IsNull(std::size_t column_position) const;

    // The bytes that the row holds of a column, good until the next Load; none for null, and for a boolean that is
    // false.
    std::optional<Bytes> Stored(std::size_t column_position) const;

    // The places that the row moved through, the last one holding its bytes; none when it is at home.
    const std::vector<RowId>& moves() const { return moves_; }

    // The value in table.columns[column_position]; Null for null. Text and memo give std::string, OLE and unknown
    // types Binary.
    runtime::Variant Value(std::size_t column_position);

private:
    std::optional<Bytes> StoredBytes(const Column& column) const;
    runtime::Variant LongColumnValue(std::size_t column_position, Bytes field);
    void Charge(std::size_t column_position, std::uint32_t bytes);
    void FollowPointers(Bytes pointer);

    DatabaseFile& file_;
    const TableDefinition& table_;
    RowShape shape_;
    DataPage page_;  // keeps the bytes of row_
    RowId id_;
    std::vector<RowId> moves_;
    RowView row_;
    LongValueReader long_values_;
    std::uint64_t charged_ = 0;          // bytes of long values since the last Load(RowId)
    std::vector<bool> charged_columns_;  // of the current row
};

}  // namespace ledgix::jet
