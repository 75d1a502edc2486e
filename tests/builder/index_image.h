#pragma once

#include <vector>

#include "file_image.h"

namespace ledgix::test {

struct IndexEntry {
    ByteList key;
    jet::RowId row;
};

struct IndexImage {
    jet::PageNumber owner = 0;
    jet::PageNumber root = 0;
    jet::RowId map;
    std::size_t entries_per_page = 100;
    bool compressed = false;
};

// Writes the tree of an index whose root page is allocated already. The entries ascend.
void WriteIndexTree(FileImage& file, const IndexImage& index, const std::vector<IndexEntry>& entries);

}  // namespace ledgix::test
