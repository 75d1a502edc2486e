#include "price_split.h"

namespace ledgix::editors {

namespace {

constexpr double kHouseShare = 0.55;
constexpr double kChattelShare = 0.2;
constexpr double kHouseRate = 4;  // percent a year
constexpr double kChattelRate = 15;

}  // namespace

bool PriceSplit::PriceChanged(double price) {
    property_.PurchasePrice = price;
    follows_ = follows_ || (property_.HouseValue == 0 && property_.ChattelValue == 0);
    if (!follows_)
        return false;
    property_.HouseValue = price * kHouseShare;
    property_.ChattelValue = price * kChattelShare;
    property_.ChattelDepn = kChattelRate;
    property_.HouseDepn = kHouseRate;
    return true;
}

}  // namespace ledgix::editors
