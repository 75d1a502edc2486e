#include "placeholders.h"

namespace ledgix::zq {

std::string ExpandPlaceholders(std::string_view text, const PlaceholderLookup& lookup) {
    std::string result;
    for (;;) {
        const std::size_t open = text.find('{');
        const std::size_t close = open == text.npos ? text.npos : text.find('}', open);
        if (close == text.npos)
            return result.append(text);
        result.append(text.substr(0, open));
        const std::string_view name = text.substr(open + 1, close - open - 1);
        result.append(lookup(name).value_or(std::string(text.substr(open, close - open + 1))));
        text.remove_prefix(close + 1);
    }
}

}  // namespace ledgix::zq
