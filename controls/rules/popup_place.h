#pragma once

// Where a pop-up goes that opens from a field. Screen coordinates, in any one unit.
namespace ledgix::controls {

struct Extent {
    int width = 0;
    int height = 0;
};

struct Place {
    int left = 0;
    int top = 0;
};

struct Area {
    Place corner;
    Extent size;
};

// Just below the field with the left edges in line; just above it where the pop-up would reach below the screen. Moved
// sideways, or down from above the screen, as far as needed to be on the screen.
Place PlacePopup(const Area& field, const Extent& popup, const Area& screen);

}  // namespace ledgix::controls
