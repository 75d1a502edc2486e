#pragma once

#include <cstdint>

// Where the rows of the profile list lie, and how they scroll. All measures are twips, 15 to a logical pixel.
namespace ledgix::shell {

inline constexpr int kTwipsPerPixel = 15;

// The gap above each row.
inline constexpr int kRowGap = 120;

// Of the panel, however small the window is.
inline constexpr int kLeastPanelHeight = 1000;

// A colour has red in the low byte, then green, then blue.
inline constexpr std::int32_t kRowColour = 0xFFFFFF;
inline constexpr std::int32_t kSelectedRowColour = 0x80FFFF;

// The top of a row in the panel when the scroll bar with this minimum stands at this value.
int RowTop(int row, int row_height, int value, int min);

// What the vertical scroll bar looks like. Its value is the bottom edge of what is seen of the list.
struct ScrollRange {
    bool visible = false;  // the rest has no meaning when it is not
    int max = 0;
    int min = 0;
    int small_change = 0;
    int large_change = 0;
    int height = 0;
    bool operator==(const ScrollRange&) const = default;
};

// There is none while the last row ends in the panel. Ranges go beyond 16 bits, so that long lists scroll to their end.
ScrollRange ScrollRangeOf(int last_top, int last_height, int panel_height, int row_height);

// The panel's height in a window of this height, where the panel begins at `panel_top` of the window.
int PanelHeight(int window_height, int panel_top);

}  // namespace ledgix::shell
