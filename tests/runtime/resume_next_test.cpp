#include "resume_next.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace ledgix::runtime {
namespace {

TEST(ResumeNext, RunsTheStatementAndReportsNothing) {
    std::vector<int> errors;
    bool ran = false;
    EXPECT_TRUE(ResumeNext([&] { ran = true; }, [&](const RuntimeError& error) { errors.push_back(error.number()); }));
    EXPECT_TRUE(ran);
    EXPECT_TRUE(errors.empty());
}

TEST(ResumeNext, ReportsEachErrorAndGoesOn) {
    std::vector<int> errors;
    const auto report = [&](const RuntimeError& error) { errors.push_back(error.number()); };
    EXPECT_FALSE(ResumeNext([] { RaiseError(ErrorNumber::kOverflow); }, report));
    EXPECT_FALSE(ResumeNext([] { RaiseEngineError(ErrorNumber::kTableNotFound, "No table"); }, report));
    EXPECT_EQ(errors, (std::vector<int>{6, 3078}));
}

TEST(ResumeNext, SkipsTheRestOfTheStatementThatFailed) {
    int steps = 0;
    ResumeNext(
        [&] {
            ++steps;
            RaiseError(ErrorNumber::kOverflow);
            ++steps;
        },
        [](const RuntimeError&) {});
    EXPECT_EQ(steps, 1);
}

TEST(ResumeNext, LetsOtherExceptionsPass) {
    const auto statement = [] { throw std::logic_error("a fault of the program"); };
    EXPECT_THROW(ResumeNext(statement, [](const RuntimeError&) {}), std::logic_error);
}

}  // namespace
}  // namespace ledgix::runtime
