#pragma once

#include <cstdint>
#include <span>

namespace ledgix::jet {

// Counts pages from the start of the file; the header page is 0.
using PageNumber = std::uint32_t;

// Jet 3 is Access 97, Jet 4 is Access 2000 to 2003.
enum class Generation { kJet3, kJet4 };

// Names a row by its home slot, which stays the same for the life of the row. Usage maps and long values are rows too.
struct RowId {
    PageNumber page = 0;
    std::uint8_t slot = 0;
    bool operator==(const RowId&) const = default;
};

using Bytes = std::span<const std::uint8_t>;

}  // namespace ledgix::jet
