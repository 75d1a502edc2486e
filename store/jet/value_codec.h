#pragma once

#include "jet_format.h"
#include "jet_types.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// The value of a column that is neither boolean nor a long value, from its bytes in a row. Numbers, dates, GUIDs and
// numerics must have exactly the bytes of their type. Unknown types give Binary.
runtime::Variant DecodeValue(const Format& format, const Column& column, Bytes stored);

// The content of a memo as text, or of an OLE column as Binary.
runtime::Variant DecodeLongValue(const Format& format, const Column& column, Bytes data);

}  // namespace ledgix::jet
