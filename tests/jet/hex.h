#pragma once

#include <string_view>

#include "row_image.h"

namespace ledgix::test {

// The bytes of "01 FF 7f"; blanks and line breaks do not matter.
ByteList Hex(std::string_view text);

}  // namespace ledgix::test
