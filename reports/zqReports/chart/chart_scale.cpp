#include "chart_scale.h"

#include <algorithm>
#include <cmath>

namespace ledgix::chart {

namespace {

// Seven digits can be read at a glance.
constexpr double kLargestPlain = 1e7;
constexpr double kLargestNamed = 1e16;
constexpr double kLeastStep = 0.01;

double RoundStep(double rough) {
    const double power = std::pow(10, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (rough <= factor * power)
            return factor * power;
    return 10 * power;
}

}  // namespace

Scale ScaleFor(double least, double most, int steps) {
    least = std::min(least, 0.0);
    most = std::max(most, 0.0);
    if (most - least < kLeastStep / 2)
        return {};
    Scale scale;
    scale.step = std::max(RoundStep((most - least) / steps), kLeastStep);
    scale.least = std::floor(least / scale.step) * scale.step;
    scale.most = std::ceil(most / scale.step) * scale.step;
    scale.decimals = std::max(0, static_cast<int>(-std::floor(std::log10(scale.step))));
    return scale;
}

Unit UnitFor(double largest) {
    struct Named {
        double below;
        Unit unit;
    };
    static const Named named[] = {{kLargestPlain, {1, {}}},
                                  {1e10, {1e6, "million"}},
                                  {1e13, {1e9, "billion"}},
                                  {kLargestNamed, {1e12, "trillion"}}};
    for (const Named& candidate : named)
        if (largest < candidate.below)
            return candidate.unit;
    const int power = static_cast<int>(std::floor(std::log10(largest)));
    return {std::pow(10, power), "\u00D7 10^" + std::to_string(power)};
}

}  // namespace ledgix::chart
