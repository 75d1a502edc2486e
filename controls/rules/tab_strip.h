#pragma once

#include <cstdint>

namespace ledgix::controls {

// Where the tabs of a tab dialog stand. Lengths are device-independent pixels from the control's top left corner.

inline constexpr int kTabStripHeight = 20;

// Width of each tab: the control's width less 1, rounded down to a multiple of `count`, divided by it. 303 pixels hold
// 3 tabs of 100. 0 when there is no room for a pixel each.
int TabWidth(int control_width, int count);

// The tab that a press at (x, y) is meant for: x / tab width - 0.5, rounded half to even, plus 1. So the border between
// tab 1 and tab 2 belongs to tab 1, that between 2 and 3 to tab 3. A press to the right of the last tab is meant for
// the last one. 0 when the press is not in the strip, or when tabs have no width.
std::int16_t TabAt(double x, double y, int control_width, int count);

}  // namespace ledgix::controls
