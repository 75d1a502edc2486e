#pragma once

#include "clock.h"

namespace ledgix::test {

// Tells one moment, and no other until it is set anew, as long as it lives.
class FixedClock : public runtime::Clock {
public:
    explicit FixedClock(const runtime::CivilTime& now) : now_(now) { runtime::InstallClock(this); }
    ~FixedClock() override { runtime::InstallClock(nullptr); }
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;

    // A fraction of a second shows in SecondsSinceMidnight alone.
    void Set(const runtime::CivilTime& now, double fraction = 0) {
        now_ = now;
        fraction_ = fraction;
    }

    runtime::CivilTime Now() override { return now_; }
    double SecondsSinceMidnight() override { return now_.hour * 3600 + now_.minute * 60 + now_.second + fraction_; }

private:
    runtime::CivilTime now_;
    double fraction_ = 0;
};

}  // namespace ledgix::test
