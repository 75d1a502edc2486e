#pragma once

#include <cstdint>

namespace ledgix::shell {

// How long the splash window stays: until 1.5 seconds after the start, which counts as the nearest whole second, halves
// to the even one. Clocks are in seconds since midnight. 100.4 -> over at 101.5; 100.6 -> over at 102.5.
//
// The clock begins again at midnight and the wait takes no notice: one that began in the last second or so of a day
// goes on until the same time of another day, if the clock gets that far at all.
class SplashWait {
public:
    explicit SplashWait(double clock);

    std::int32_t start() const { return start_; }
    bool IsOver(double clock) const;

private:
    std::int32_t start_;
};

}  // namespace ledgix::shell
