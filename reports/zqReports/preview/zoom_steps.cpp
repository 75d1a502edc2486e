#include "zoom_steps.h"

#include <algorithm>
#include <array>

namespace ledgix::preview {

namespace {

constexpr std::array kSteps{kLeastZoom, 0.33, 0.5,  0.67, 0.75, 0.9, 1.0,      1.1,
                            1.25,       1.5,  1.75, 2.0,  2.5,  3.0, kMostZoom};
// A zoom this close to a step shows as that step.
constexpr double kSame = 0.004;

}  // namespace

double NextZoom(double zoom) {
    const auto next = std::find_if(kSteps.begin(), kSteps.end(), [&](double step) { return step > zoom + kSame; });
    return next == kSteps.end() ? kMostZoom : *next;
}

double PreviousZoom(double zoom) {
    const auto previous =
        std::find_if(kSteps.rbegin(), kSteps.rend(), [&](double step) { return step < zoom - kSame; });
    return previous == kSteps.rend() ? kLeastZoom : *previous;
}

}  // namespace ledgix::preview
