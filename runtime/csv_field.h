#pragma once

#include <string>

namespace ledgix::runtime {

// A text as a field of a CSV record (RFC 4180): in quotation marks where it holds a comma, a quotation mark or a line
// break, or where a blank at its start or end could get lost.
std::string CsvField(const std::string& text);

}  // namespace ledgix::runtime
