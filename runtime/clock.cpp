#include "clock.h"

#include <chrono>
#include <ctime>

namespace ledgix::runtime {

namespace {

std::tm LocalTime(std::time_t moment) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &moment);
#else
    localtime_r(&moment, &local);
#endif
    return local;
}

class SystemClock : public Clock {
public:
    CivilTime Now() override {
        const std::tm local = LocalTime(std::time(nullptr));
        // A leap second is shown as the one before it.
        return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                local.tm_hour,        local.tm_min,     local.tm_sec > 59 ? 59 : local.tm_sec};
    }

    double SecondsSinceMidnight() override {
        const auto now = std::chrono::system_clock::now();
        const auto whole = std::chrono::floor<std::chrono::seconds>(now);
        const std::tm local = LocalTime(std::chrono::system_clock::to_time_t(whole));
        const double fraction = std::chrono::duration<double>(now - whole).count();
        return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + fraction;
    }
};

SystemClock system_clock;
Clock* installed = &system_clock;

}  // namespace

void InstallClock(Clock* clock) {
    installed = clock ? clock : &system_clock;
}

Clock& SystemTime() {
    return *installed;
}

}  // namespace ledgix::runtime
