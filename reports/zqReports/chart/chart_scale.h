#pragma once

#include <string>

// The scale of an axis.
namespace ledgix::chart {

// From `least` to `most` in whole steps; a step is 1, 2 or 5 times a power of ten.
struct Scale {
    double least = 0;
    double most = 1;
    double step = 0;
    int decimals = 0;  // that its ticks need
};

// Covers 0 and both amounts in at most `steps` + 1 steps of a cent or more. Where there is nothing to measure the step
// is 0.
Scale ScaleFor(double least, double most, int steps);

// What amounts are divided by so that labels stay short.
struct Unit {
    double size = 1;
    std::string name;  // "million"; empty for plain amounts
};

Unit UnitFor(double largest);

}  // namespace ledgix::chart
