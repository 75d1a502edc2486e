#pragma once

#include <string>
#include <string_view>

#include "jet_types.h"

namespace ledgix::jet {

// Error 3049 with a text that says what is wrong and where.
[[noreturn]] void RaiseDamage(std::string_view text);

// "row 3 of page 17"
std::string Describe(RowId row);
std::string DescribePage(PageNumber page);  // "page 17"

}  // namespace ledgix::jet
