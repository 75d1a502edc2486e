#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

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

// Another number for a new record whose own has been taken by another program: one above the highest that the rows of
// `sql` bear in `column`, or that was seen in this run. The same number when it is free, and where the rows cannot be
// read. Raises nothing but error 6 as above.
std::int32_t FreeNumber(std::int32_t number, std::string sql, std::string_view column, std::int32_t& highest_seen);

}  // namespace ledgix::model
