#pragma once

#include <functional>

#include "check_run.h"
#include "raw_definition.h"

namespace ledgix::jet {

// Called with the key and the row of each entry of the leaves, in their order.
using EntryVisitor = std::function<void(Bytes key, RowId row)>;

// Checks the pages of one index and how they hang together, and claims them.
void CheckTree(CheckRun& run, PageNumber table, const RawIndex& index, const EntryVisitor& visit);

}  // namespace ledgix::jet
