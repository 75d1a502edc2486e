#pragma once

#include <cstdint>
#include <vector>

#include "jet_types.h"

namespace ledgix::test {

// A database with a case of everything that a reader meets: all column types, numbers stored as variable, dropped and
// added columns, short rows, moved and deleted rows, rows near 256 bytes, long values of all kinds, a definition over
// several pages, an index of several levels, a linked table.
std::vector<std::uint8_t> BuildSampleDatabase(jet::Generation generation);

// The same in little: as few pages as the most telling of these cases take.
std::vector<std::uint8_t> BuildSmallDatabase(jet::Generation generation);

}  // namespace ledgix::test
