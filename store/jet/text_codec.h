#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"

namespace ledgix::jet {

// Text of a column as UTF-8. Jet 3: code page 1252. Jet 4: UTF-16, or compressed when it starts with FF FE. Half a
// character at the end and unpaired surrogates become U+FFFD; nothing fails.
std::string DecodeText(const Format& format, Bytes stored);

// The same for names in definitions, which are never compressed.
std::string DecodeName(const Format& format, Bytes stored);

// Text as a column stores it; compressed where the column allows that, the text has at least three characters and all
// are U+0001 to U+00FF. Error 3251 for text that would not read back as it is: with Jet 3 where the code page lacks a
// character, with Jet 4 where it begins with U+FEFF and so would read as compressed.
std::vector<std::uint8_t> EncodeText(const Format& format, std::string_view text, bool may_be_compressed);

// The same for names in definitions.
std::vector<std::uint8_t> EncodeName(const Format& format, std::string_view name);

}  // namespace ledgix::jet
