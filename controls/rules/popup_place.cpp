#include "popup_place.h"

#include <algorithm>

namespace ledgix::controls {

Place PlacePopup(const Area& field, const Extent& popup, const Area& screen) {
    Place place{field.corner.left, field.corner.top + field.size.height};
    if (place.top + popup.height > screen.corner.top + screen.size.height)
        place.top -= field.size.height + popup.height;
    place.top = std::max(place.top, screen.corner.top);
    place.left = std::min(place.left, screen.corner.left + screen.size.width - popup.width);
    place.left = std::max(place.left, screen.corner.left);
    return place;
}

}  // namespace ledgix::controls
