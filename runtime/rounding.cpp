#include "rounding.h"

#include <cmath>

#include "runtime_error.h"

namespace ledgix::runtime {

namespace {

// std::nearbyint would follow the floating-point mode of the moment.
double HalfToEven(double x) {
    const double below = std::floor(x);
    const double rest = x - below;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0))
        return below + 1.0;
    return below;
}

}  // namespace

double Round(double x, int places) {
    const double factor = std::pow(10.0, places);
    const double scaled = x * factor;
    if (!std::isfinite(scaled))
        return x;
    return HalfToEven(scaled) / factor + 0.0;
}

double Divide(double numerator, double denominator) {
    if (denominator == 0.0)
        RaiseError(ErrorNumber::kDivisionByZero);
    return CheckOverflow(numerator / denominator);
}

double CheckOverflow(double x) {
    if (!std::isfinite(x))
        RaiseError(ErrorNumber::kOverflow);
    return x;
}

}  // namespace ledgix::runtime
