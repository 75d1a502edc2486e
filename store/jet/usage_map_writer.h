#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "jet_format.h"
#include "jet_types.h"

namespace ledgix::jet {

// The row of an empty usage map of the size that new ones have.
std::vector<std::uint8_t> MakeUsageMap(const Format& format);

// Puts a page into a map that holds its bits itself, or takes it out; false when the map does not reach to it.
bool SetInUsageMap(std::span<std::uint8_t> map, PageNumber page, bool in_map);

// Puts all pages from `first` on as far as the map reaches into it.
void FillUsageMap(std::span<std::uint8_t> map, PageNumber first);

}  // namespace ledgix::jet
