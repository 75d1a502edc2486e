#pragma once

#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// The bytes by which an index orders its entries: the codes of its columns, one after the other. Comparing keys byte by
// byte compares the values.
using IndexKey = std::vector<std::uint8_t>;

// Appends the code of one column. The value is Null or of the column's own type. Error 3251 for text with a character
// that the sort order of the generation has no code for: it cannot be put into an index or looked up.
void AppendKeyColumn(const Format& format, bool ascending, const runtime::Variant& value, IndexKey& key);

// The key of a row: values[i] is that of index.columns[i]; fewer values give the beginning of a key.
IndexKey MakeIndexKey(const Format& format, const Index& index, const std::vector<runtime::Variant>& values);

}  // namespace ledgix::jet
