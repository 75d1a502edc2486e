#pragma once

#include <vector>

#include "jet_types.h"
#include "pager.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// Stores the values of memo and OLE columns, and gives back the room of those that nobody needs any more. Works in the
// topmost level of the pager. Errors: 3421 for a value of another type, 3251 for text that can't be stored, 3049, 3026.
class LongValueWriter {
public:
    explicit LongValueWriter(Pager& pager) : pager_(pager) {}

    // The field that the row is to hold: short data in it, longer data on the column's own pages.
    std::vector<std::uint8_t> Store(const Column& column, const runtime::Variant& value);

    // Frees what a field points at.
    void Free(const Column& column, Bytes field, RowId row);

private:
    Pager& pager_;
};

}  // namespace ledgix::jet
