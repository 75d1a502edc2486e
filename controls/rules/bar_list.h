#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ledgix::controls {

// The parts of a text of which each ends in "|"; what stands behind the last "|" is no part of the list.
// Error 6 from the 32768th part on.
std::vector<std::string> SplitBars(std::string_view text);

}  // namespace ledgix::controls
