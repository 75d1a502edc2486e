#include "tab_strip.h"

#include <algorithm>

#include "rounding.h"

namespace ledgix::controls {

int TabWidth(int control_width, int count) {
    return std::max(control_width - 1, 0) / count;
}

std::int16_t TabAt(double x, double y, int control_width, int count) {
    const int tab_width = TabWidth(control_width, count);
    if (tab_width == 0 || x < 0 || y < 0 || y >= kTabStripHeight) {
        return 0;
    }
    const double tab = runtime::Round(x / tab_width - 0.5, 0) + 1;
    return static_cast<std::int16_t>(std::min(tab, static_cast<double>(count)));
}

}  // namespace ledgix::controls
