#pragma once

#include "date_time.h"

namespace ledgix::runtime {

// The wall clock of the user's time zone.
class Clock {
public:
    virtual ~Clock() = default;
    virtual CivilTime Now() = 0;
    // Seconds since midnight, with their fraction.
    virtual double SecondsSinceMidnight() = 0;
};

// Makes `clock` tell the time from now on; nullptr brings back the system's. The caller keeps the clock.
void InstallClock(Clock* clock);

// The clock in force.
Clock& SystemTime();

}  // namespace ledgix::runtime
