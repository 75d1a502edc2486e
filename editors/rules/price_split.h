#pragma once

#include "cls_property.h"

namespace ledgix::editors {

// Splits the price of a new purchase into what can be depreciated: 55 % house at 4 % a year, 20 % chattels at 15 %.
// The split follows an entry in the price field to its end, if neither value was set when it began; later entries
// leave a value that is not 0 alone.
class PriceSplit {
public:
    // The property must outlive this object.
    explicit PriceSplit(model::clsProperty& property) : property_(property) {}

    // One step of an entry, in dollars: sets PurchasePrice. True when it has set the values and rates of depreciation
    // as well.
    bool PriceChanged(double price);
    // The next step begins another entry.
    void EndEntry() { follows_ = false; }

private:
    model::clsProperty& property_;
    bool follows_ = false;
};

}  // namespace ledgix::editors
