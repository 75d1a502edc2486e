#pragma once

#include <cstdint>
#include <vector>

#include "index_key.h"
#include "jet_format.h"
#include "jet_types.h"

namespace ledgix::jet {

// One row in an index. Entries are ordered by key, then by row.
struct IndexEntry {
    IndexKey key;
    RowId row;

    bool operator<(const IndexEntry& other) const;
};

// A leaf without neighbours that holds these entries, which ascend and must fit on one page without compression.
std::vector<std::uint8_t> MakeIndexLeaf(const Format& format, PageNumber owner, const std::vector<IndexEntry>& entries);

// The statistic of an index whose entries ascend.
std::uint32_t CountDistinctKeys(const std::vector<IndexEntry>& entries);

}  // namespace ledgix::jet
