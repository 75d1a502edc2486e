#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ledgix::zq {

// Answers what stands for the name in "{name}"; nothing when there is no such name.
using PlaceholderLookup = std::function<std::optional<std::string>(std::string_view)>;

// The text with each "{name}" replaced by what `lookup` answers. Unknown names and open braces stay as they are.
std::string ExpandPlaceholders(std::string_view text, const PlaceholderLookup& lookup);

}  // namespace ledgix::zq
