#pragma once

#include <cstdint>
#include <limits>

#include "runtime_error.h"

namespace ledgix::model {

// Asks for the next free number.
inline constexpr std::int32_t kNewNumber = -1;

// Hands out record numbers: `number` becomes one above the highest seen when it is kNewNumber, and else may become the
// highest seen itself. Error 6 when 32 bits are used up.
inline void TakeNumber(std::int32_t& number, std::int32_t& highest_seen) {
    if (number == kNewNumber) {
        if (highest_seen == std::numeric_limits<std::int32_t>::max())
            runtime::RaiseError(runtime::ErrorNumber::kOverflow);
        number = ++highest_seen;
    } else if (number > highest_seen) {
        highest_seen = number;
    }
}

}  // namespace ledgix::model
