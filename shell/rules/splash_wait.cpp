#include "splash_wait.h"

#include "conversions.h"

namespace ledgix::shell {

namespace {

constexpr double kSeconds = 1.5;

}  // namespace

SplashWait::SplashWait(double clock) : start_(runtime::ToInt32(clock)) {}

bool SplashWait::IsOver(double clock) const {
    return clock - start_ >= kSeconds;
}

}  // namespace ledgix::shell
