#include "page_sequence.h"

#include <algorithm>

namespace ledgix::preview {

namespace {

bool IsWanted(int number, const PrintWish& wish) {
    return wish.ranges.empty() || std::any_of(wish.ranges.begin(), wish.ranges.end(), [&](const auto& range) {
               return number >= range.first && number <= range.second;
           });
}

}  // namespace

std::vector<int> PageSequence(int pages, const PrintWish& wish) {
    std::vector<int> copy;
    for (int i = 0; i < pages; ++i)
        if (IsWanted(i + 1, wish))
            copy.insert(copy.end(), static_cast<std::size_t>(wish.collated ? 1 : std::max(wish.copies, 1)), i);
    if (wish.last_first)
        std::reverse(copy.begin(), copy.end());
    std::vector<int> sequence = copy;
    for (int more = 1; wish.collated && more < wish.copies; ++more)
        sequence.insert(sequence.end(), copy.begin(), copy.end());
    return sequence;
}

}  // namespace ledgix::preview
