#pragma once

#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// The bytes of a row in the present shape of its table. values[i] is that of table.columns[i], of the column's own type
// or Null; a boolean is never null, Null is false. The value of a memo or OLE column is the field as rows hold it, a
// long value header and what follows it, as Binary. Errors: 3047 when the row is longer than rows can be, and those of
// EncodeValue.
std::vector<std::uint8_t> EncodeRow(const Format& format, const TableDefinition& table,
                                    const std::vector<runtime::Variant>& values);

}  // namespace ledgix::jet
