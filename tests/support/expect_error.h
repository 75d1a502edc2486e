#pragma once

#include <gtest/gtest.h>

#include "runtime_error.h"

// Expects the statement to raise a RuntimeError of this number.
#define EXPECT_ERROR(statement, expected_number)                                            \
    do {                                                                                    \
        try {                                                                               \
            static_cast<void>(statement);                                                   \
            ADD_FAILURE() << "no error, expected " << static_cast<int>(expected_number);    \
        } catch (const ledgix::runtime::RuntimeError& raised) {                             \
            EXPECT_EQ(raised.number(), static_cast<int>(expected_number)) << raised.what(); \
        }                                                                                   \
    } while (false)
