#pragma once

#include "check_run.h"

namespace ledgix::jet {

// Rules of the header page, and its claim.
void CheckHeader(CheckRun& run);

}  // namespace ledgix::jet
