#pragma once

#include <cstdint>
#include <vector>

#include "jet_types.h"
#include "variant.h"

namespace ledgix::jet {

// The content of a new database file: the four system tables, and no table of the user. But for dates and unused bytes
// it is the file that an engine of the generation makes. `created` is the date of the objects in the catalogue; the
// header has a constant one (see MakeHeaderPage).
std::vector<std::uint8_t> NewDatabase(Generation generation, runtime::Date created);

}  // namespace ledgix::jet
