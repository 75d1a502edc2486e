#pragma once

#include <cstdint>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// The value of a column that is neither boolean nor a long value, from its bytes in a row. Numbers, dates, GUIDs and
// numerics must have exactly the bytes of their type. Unknown types give Binary.
runtime::Variant DecodeValue(const Format& format, const Column& column, Bytes stored);

// Replaces `stored` by the bytes of such a value, which is not Null. Error 3421 for a value of another type than the
// column's, or a numeric of another scale; 3163 for a text or binary value that is longer than the column; see also
// EncodeText.
void EncodeValue(const Format& format, const Column& column, const runtime::Variant& value,
                 std::vector<std::uint8_t>& stored);

// Error 3421: the value is none of the column's.
[[noreturn]] void RaiseConversion(const Column& column);

// The content of a memo as text, or of an OLE column as Binary.
runtime::Variant DecodeLongValue(const Format& format, const Column& column, Bytes data);

}  // namespace ledgix::jet
