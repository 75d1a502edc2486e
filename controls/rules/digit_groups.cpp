#include "digit_groups.h"

#include <algorithm>

namespace ledgix::controls {

bool AreDigitGroups(const std::vector<std::string>& runs) {
    if (runs.size() < 2 || runs.front().empty() || runs.front().front() == '0' || runs.back().size() != 3)
        return false;
    const auto middle_has = [&runs](std::size_t size) {
        return runs.front().size() <= size &&
               std::all_of(runs.begin() + 1, runs.end() - 1, [size](const auto& run) { return run.size() == size; });
    };
    return middle_has(3) || (runs.size() > 2 && middle_has(2));
}

}  // namespace ledgix::controls
