#pragma once

#include <string_view>

#include "jet_types.h"

namespace ledgix::jet {

class DatabaseFile;

// Enters a new table of the user into the catalogue, with the rights that its container passes on. Only inside a
// Transaction. Errors: those of TableWriter, 3049 when the catalogue lacks what every catalogue has.
void RegisterTable(DatabaseFile& file, PageNumber definition_page, std::string_view name);

}  // namespace ledgix::jet
