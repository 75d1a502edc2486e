#pragma once

#include <cstdint>
#include <vector>

#include "jet_types.h"
#include "pager.h"
#include "table_definition.h"

namespace ledgix::jet {

// Reads the definition of a table that starts on this page. Error 3049 when there is none or it contradicts itself.
TableDefinition ReadDefinition(Pager& pager, PageNumber page);

// A definition as it is stored.
struct StoredDefinition {
    std::vector<PageNumber> pages;
    std::vector<std::uint8_t> bytes;  // as one piece: the whole first page, and the others without their headers
};

// Error 3049 when the pages do not hold as much as the definition claims.
StoredDefinition ReadStoredDefinition(Pager& pager, PageNumber page);

}  // namespace ledgix::jet
