#include "profile_measures.h"

#include <algorithm>

namespace ledgix::shell {

namespace {

// What the window keeps free below the panel.
constexpr int kRoomBelowPanel = 1000;

}  // namespace

int RowTop(int row, int row_height, int value, int min) {
    return row * row_height + kRowGap + row * kRowGap - (value - min);
}

ScrollRange ScrollRangeOf(int last_top, int last_height, int panel_height, int row_height) {
    const int bottom = last_top + last_height;
    if (bottom <= panel_height)
        return {};
    return {true, bottom + kRowGap, panel_height, row_height, row_height, panel_height};
}

int PanelHeight(int window_height, int panel_top) {
    return std::max(window_height - panel_top - kRoomBelowPanel, kLeastPanelHeight);
}

}  // namespace ledgix::shell
