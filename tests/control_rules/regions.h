#pragma once

#include "regional_settings.h"

namespace ledgix::test {

inline runtime::RegionalSettings RegionWith(const char* decimal, const char* group, const char* currency) {
    runtime::RegionalSettings region = runtime::UnitedStates();
    region.decimal_separator = decimal;
    region.group_separator = group;
    region.currency_symbol = currency;
    return region;
}

inline runtime::RegionalSettings Germany() {
    return RegionWith(",", ".", "€");
}

}  // namespace ledgix::test
