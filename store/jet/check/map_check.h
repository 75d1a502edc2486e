#pragma once

#include <string>
#include <vector>

#include "check_run.h"

namespace ledgix::jet {

// Checks one usage map, which must not have been checked before, and the page it is on, and claims its pages. `user`
// says whose map it is. Gives the pages of the file that it lists, ascending.
std::vector<PageNumber> CheckMap(CheckRun& run, RowId map, const std::string& user);

// Checks both maps that the file has for itself. True for the pages that are free, as far as their map goes; everything
// is used when there is no map.
std::vector<bool> CheckFreePages(CheckRun& run);

}  // namespace ledgix::jet
