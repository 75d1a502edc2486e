#pragma once

#include <string>
#include <vector>

namespace ledgix::controls {

// True when runs of digits are the groups of one number: threes ("1|234|567") or, as in India, a three behind twos
// ("12|34|567"). The first group is not empty and does not start with 0. One run alone is no grouping.
bool AreDigitGroups(const std::vector<std::string>& runs);

}  // namespace ledgix::controls
