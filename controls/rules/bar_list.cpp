#include "bar_list.h"

#include <cstdint>
#include <limits>

#include "runtime_error.h"

namespace ledgix::controls {

std::vector<std::string> SplitBars(std::string_view text) {
    std::vector<std::string> parts;
    for (auto bar = text.find('|'); bar != std::string_view::npos; bar = text.find('|')) {
        if (parts.size() == std::numeric_limits<std::int16_t>::max()) {
            runtime::RaiseError(runtime::ErrorNumber::kOverflow);
        }
        parts.emplace_back(text.substr(0, bar));
        text.remove_prefix(bar + 1);
    }
    return parts;
}

}  // namespace ledgix::controls
