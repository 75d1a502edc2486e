#pragma once

#include <vector>

#include "jet_types.h"
#include "pager.h"

namespace ledgix::jet {

// The pages in a usage map, ascending, each once. Error 3049 when the map is damaged or lists a page that the file
// does not have.
std::vector<PageNumber> ReadUsageMap(Pager& pager, RowId map);

}  // namespace ledgix::jet
