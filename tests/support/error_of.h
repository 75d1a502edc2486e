#pragma once

#include <functional>

#include "runtime_error.h"

namespace ledgix::test {

// The number of the error that a statement raises, 0 when it raises none.
inline int ErrorOf(const std::function<void()>& statement) {
    try {
        statement();
        return 0;
    } catch (const runtime::RuntimeError& error) {
        return error.number();
    }
}

}  // namespace ledgix::test

// Expects an expression to raise the error of this number.
#define EXPECT_ERROR(expression, expected) \
    EXPECT_EQ(ledgix::test::ErrorOf([&] { static_cast<void>(expression); }), static_cast<int>(expected))
