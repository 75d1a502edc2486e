#pragma once

#include <string>

#include "jet_format.h"
#include "jet_types.h"

namespace ledgix::jet {

// Text of a column as UTF-8. Jet 3: code page 1252. Jet 4: UTF-16, or compressed when it starts with FF FE. Half a
// character at the end and unpaired surrogates become U+FFFD; nothing fails.
std::string DecodeText(const Format& format, Bytes stored);

// The same for names in definitions, which are never compressed.
std::string DecodeName(const Format& format, Bytes stored);

}  // namespace ledgix::jet
