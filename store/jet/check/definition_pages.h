#pragma once

#include <cstdint>
#include <vector>

#include "check_run.h"

namespace ledgix::jet {

// Claims the pages of a table definition, checks what each has for itself, and joins them. Shorter than the definition
// says when pages are missing, empty when there is no definition at all.
std::vector<std::uint8_t> JoinDefinitionPages(CheckRun& run, PageNumber first);

}  // namespace ledgix::jet
