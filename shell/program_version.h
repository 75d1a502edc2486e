#pragma once

#include "version_text.h"

namespace ledgix::shell {

// The program's own, as its build says.
inline constexpr Version kProgramVersion{LEDGIX_VERSION_MAJOR, LEDGIX_VERSION_MINOR, LEDGIX_VERSION_REVISION};

}  // namespace ledgix::shell
