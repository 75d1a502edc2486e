#pragma once

#include <string_view>

namespace ledgix::dao {

// The pattern language of Like, without regard to case: * any characters, ? one, # one digit, [a-c] one of a list,
// [!a-c] one that is not; a list stands for *, ?, # and [ themselves too. An unclosed list matches nothing.
bool MatchesPattern(std::string_view text, std::string_view pattern);

}  // namespace ledgix::dao
