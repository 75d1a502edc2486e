#include "popup_place.h"

#include <gtest/gtest.h>

namespace ledgix::controls {
namespace {

constexpr Area kScreen{{0, 0}, {1000, 800}};
constexpr Area kRightScreen{{1000, 100}, {1000, 800}};
constexpr Extent kPopup{200, 150};

void ExpectPlace(const Place& place, int left, int top) {
    EXPECT_EQ(place.left, left);
    EXPECT_EQ(place.top, top);
}

TEST(Popup, OpensJustBelowTheFieldInLineWithIt) {
    ExpectPlace(PlacePopup({{300, 200}, {120, 24}}, kPopup, kScreen), 300, 224);
}

TEST(Popup, OpensJustAboveTheFieldNearTheBottom) {
    ExpectPlace(PlacePopup({{300, 700}, {120, 24}}, kPopup, kScreen), 300, 550);
}

TEST(Popup, MayTouchTheBottom) {
    ExpectPlace(PlacePopup({{300, 626}, {120, 24}}, kPopup, kScreen), 300, 650);
    ExpectPlace(PlacePopup({{300, 627}, {120, 24}}, kPopup, kScreen), 300, 477);
}

TEST(Popup, StaysOnItsScreenSideways) {
    ExpectPlace(PlacePopup({{950, 200}, {120, 24}}, kPopup, kScreen), 800, 224);
    ExpectPlace(PlacePopup({{-30, 200}, {120, 24}}, kPopup, kScreen), 0, 224);
}

TEST(Popup, KnowsAScreenThatDoesNotStartAtTheOrigin) {
    ExpectPlace(PlacePopup({{1300, 820}, {120, 24}}, kPopup, kRightScreen), 1300, 670);
    ExpectPlace(PlacePopup({{990, 200}, {120, 24}}, kPopup, kRightScreen), 1000, 224);
}

TEST(Popup, ShowsItsTopOnALowScreen) {
    ExpectPlace(PlacePopup({{10, 60}, {120, 24}}, kPopup, {{0, 0}, {1000, 100}}), 10, 0);
}

}  // namespace
}  // namespace ledgix::controls
