#pragma once

#include "variant.h"

namespace ledgix::jet {
struct Column;
}

namespace ledgix::dao {

// What the engine stores when a value is given to a column: a value of the column's own type, or Null. Whole numbers
// take halves to the even neighbour; text becomes a number, a date or a truth value when it is one; anything becomes
// text, dates in the general form; of other numbers than zero a truth value is true, and of Null false.
// Errors: 3421 a value that makes no sense in the column or that is beyond its range, 3163 text or bytes longer than
// the column.
runtime::Variant ConvertToColumn(const runtime::Variant& value, const jet::Column& column);

}  // namespace ledgix::dao
