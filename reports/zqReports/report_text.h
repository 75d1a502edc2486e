#pragma once

#include <string>

#include "document.h"

namespace ledgix::zq {

// The printed bands for reading in a terminal: UTF-8, line feeds. Columns are as wide as their widest text, nothing is
// cut, headings are underlined. Pages play no part.
std::string ToText(const Document& document);

}  // namespace ledgix::zq
