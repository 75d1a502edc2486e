#pragma once

#include <memory>

#include "check_run.h"
#include "checked_rows.h"
#include "raw_definition.h"
#include "table_definition.h"

namespace ledgix::jet {

// Checks and claims the pages of the rows and long values of a table, and its rows as far as there is a definition to
// decode them by, which must outlive the result. Null without one.
std::unique_ptr<CheckedRows> CheckData(CheckRun& run, const RawDefinition& raw, const TableDefinition* table);

}  // namespace ledgix::jet
