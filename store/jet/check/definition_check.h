#pragma once

#include "check_run.h"
#include "raw_definition.h"

namespace ledgix::jet {

// Rules of columns and indexes within their definition.
void CheckDefinition(CheckRun& run, const RawDefinition& table);

}  // namespace ledgix::jet
