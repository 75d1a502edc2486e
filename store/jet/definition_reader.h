#pragma once

#include "jet_types.h"
#include "pager.h"
#include "table_definition.h"

namespace ledgix::jet {

// Reads the definition of a table that starts on this page. Error 3049 when there is none or it contradicts itself.
TableDefinition ReadDefinition(Pager& pager, PageNumber page);

}  // namespace ledgix::jet
