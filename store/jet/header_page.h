#pragma once

#include <cstdint>
#include <vector>

#include "jet_types.h"

namespace ledgix::jet {

class PageFile;

// What page 0 says, after the refusals.
struct HeaderPage {
    Generation generation = Generation::kJet4;
    int code_page = 1252;  // of text in a Jet 3 file
};

// Reads and checks page 0. Errors: 3343 when the file is no database of a known generation, 3049 when its length is
// no whole number of pages, 3031 when it has a password, 3112 when its pages are encrypted.
HeaderPage ReadHeaderPage(PageFile& file);

// Page 0 of a new file: no password, not encrypted, nobody has it open. Its creation date is always the same one,
// because the security identifiers of Jet 4 are masked by a key that belongs to the header as a whole.
std::vector<std::uint8_t> MakeHeaderPage(Generation generation);

}  // namespace ledgix::jet
