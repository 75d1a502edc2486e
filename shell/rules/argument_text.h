#pragma once

#include <string>

namespace ledgix::shell {

// All that stands behind the program's name, joined by blanks. An argument without characters is written as "", so
// that the text is empty only when there is no argument at all.
std::string ArgumentText(int argc, const char* const* argv);

}  // namespace ledgix::shell
