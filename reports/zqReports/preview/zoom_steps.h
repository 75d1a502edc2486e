#pragma once

namespace ledgix::preview {

// The sizes between which the zoom commands step; 1 is the size on paper.
inline constexpr double kLeastZoom = 0.25;
inline constexpr double kMostZoom = 4;

// The next step above or below `zoom`, which may lie between two; the last step where there is none.
double NextZoom(double zoom);
double PreviousZoom(double zoom);

}  // namespace ledgix::preview
