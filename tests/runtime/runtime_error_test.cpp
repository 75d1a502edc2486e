#include "runtime_error.h"

#include <gtest/gtest.h>

namespace ledgix::runtime {
namespace {

RuntimeError Caught(void (*statement)()) {
    try {
        statement();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, "", "nothing was raised"};
}

TEST(RuntimeErrors, HaveNumberSourceAndDescription) {
    const RuntimeError error(-2147217900, "Ledgix", "Line one\r\nline two");
    EXPECT_EQ(error.number(), -2147217900);
    EXPECT_EQ(error.source(), "Ledgix");
    EXPECT_EQ(error.description(), "Line one\r\nline two");
    EXPECT_STREQ(error.what(), "-2147217900 - Line one\r\nline two");
}

TEST(RuntimeErrors, AreToldApartByNumber) {
    const RuntimeError error(6, "Ledgix", "Overflow");
    EXPECT_TRUE(error.Is(ErrorNumber::kOverflow));
    EXPECT_FALSE(error.Is(ErrorNumber::kTypeMismatch));
}

TEST(RaisedErrors, OfTheProgramHaveTheStandardDescription) {
    const RuntimeError error = Caught([] { RaiseError(ErrorNumber::kDivisionByZero); });
    EXPECT_EQ(error.number(), 11);
    EXPECT_EQ(error.source(), kProgramSource);
    EXPECT_EQ(error.description(), "Division by zero");
    EXPECT_EQ(Caught([] { RaiseError(ErrorNumber::kInvalidArgument); }).description(),
              "Invalid procedure call or argument");
    EXPECT_EQ(Caught([] { RaiseError(ErrorNumber::kInvalidNull); }).description(), "Invalid use of Null");
}

TEST(RaisedErrors, OfTheProgramMayHaveADescriptionOfTheirOwn) {
    const RuntimeError error = Caught([] { RaiseError(ErrorNumber::kFileNotFound, "No logo"); });
    EXPECT_STREQ(error.what(), "53 - No logo");
}

TEST(RaisedErrors, OfTheEngineBearItsName) {
    const RuntimeError error = Caught([] { RaiseEngineError(ErrorNumber::kTableNotFound, "No such table"); });
    EXPECT_EQ(error.number(), 3078);
    EXPECT_EQ(error.source(), "Microsoft JET Database Engine");
    EXPECT_EQ(error.description(), "No such table");
}

}  // namespace
}  // namespace ledgix::runtime
