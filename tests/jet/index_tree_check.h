#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "pager.h"
#include "row_image.h"
#include "table_definition.h"

namespace ledgix::test {

// What came of checking the pages of an index, with a decoder apart from that of the engine.
struct TreeCheck {
    std::string fault;              // the first one; empty when the tree is as the engine writes it
    std::vector<ByteList> entries;  // of the leaves, in order: key and row pointer
    std::size_t levels = 0;
    std::size_t pages = 0;
    std::size_t compressed_pages = 0;
};

TreeCheck CheckIndexTree(jet::Pager& pager, jet::PageNumber owner, const jet::Index& index);

// Whether the map of free pages lists a page.
bool IsFreePage(jet::Pager& pager, jet::PageNumber page);

}  // namespace ledgix::test
