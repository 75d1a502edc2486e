#include "tab_pages.h"

namespace ledgix::controls {

namespace {

std::optional<std::int16_t> Asked(std::int16_t place) {
    return place == -1 || place == 0 ? std::nullopt : std::optional(place);
}

}  // namespace

std::vector<PageStep> PageSteps(const TabTable& table, const PageView& view) {
    std::vector<PageStep> steps;
    if (view.hidden) {
        return steps;
    }
    for (const TabTable::Tab& tab : table.list()) {
        if (tab.frame_name.empty()) {
            continue;
        }
        PageStep step{tab.frame_name, tab.selected, {}, {}};
        if (step.shown) {
            step.left = Asked(view.frame_left);
            step.top = Asked(view.frame_top);
        }
        steps.push_back(step);
    }
    return steps;
}

}  // namespace ledgix::controls
