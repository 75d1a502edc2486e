#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tab_table.h"

namespace ledgix::controls {

// What a tab dialog knows about its pages besides the tabs.
struct PageView {
    // Where the page of the current tab goes, in twips of its container; -1 and 0 leave it where it is.
    std::int16_t frame_top = -1;
    std::int16_t frame_left = -1;
    bool hidden = false;  // the control is; pages stay as they are meanwhile
};

// What is to be done with one frame of the host when pages are switched.
struct PageStep {
    std::string frame_name;
    bool shown = false;  // brought to the front, without a border; the frames of the other tabs are hidden
    std::optional<std::int16_t> left;  // twips; empty: as it is
    std::optional<std::int16_t> top;
    bool operator==(const PageStep&) const = default;
};

// The steps that show the page of the current tab, in the order of the tabs; tabs without a frame need none.
std::vector<PageStep> PageSteps(const TabTable& table, const PageView& view);

}  // namespace ledgix::controls
