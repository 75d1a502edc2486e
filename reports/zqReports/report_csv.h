#pragma once

#include <string>

#include "document.h"

namespace ledgix::zq {

// One record for each printed band: its name, then its field texts in template order (a picture's is its path).
// Quoted as RFC 4180 has it, records end in CR LF, UTF-8 without a byte order mark. Records are as long as their bands
// have fields.
std::string ToCsv(const Document& document);

}  // namespace ledgix::zq
