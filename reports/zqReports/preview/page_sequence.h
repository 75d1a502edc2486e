#pragma once

#include <utility>
#include <vector>

namespace ledgix::preview {

// What the user asks of a printer that cannot do it by itself.
struct PrintWish {
    std::vector<std::pair<int, int>> ranges;  // of page numbers from 1, ends included; none: all pages
    int copies = 1;
    bool collated = true;  // one whole copy behind the other
    bool last_first = false;
};

// The pages, counted from 0, in the order in which they are to be printed. Numbers of pages that are not there are
// passed over, and a page that is in two ranges is printed once a copy.
std::vector<int> PageSequence(int pages, const PrintWish& wish);

}  // namespace ledgix::preview
