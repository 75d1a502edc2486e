#pragma once

#include <string_view>

#include "index_key.h"

namespace ledgix::jet {

// Codes of text in index keys under the sort order 0x0409, General: letters in either case, accents and (Jet 4)
// apostrophes and hyphens count only where the rest is equal, trailing spaces not at all. With the end mark, and
// inverted for descending order. At most 255 characters count.

// Characters U+0000 to U+00FF; error 3251 for others.
void AppendTextKeyJet4(std::string_view text, bool ascending, IndexKey& key);

// Characters of code page 1252; error 3251 for others.
void AppendTextKeyJet3(std::string_view text, bool ascending, IndexKey& key);

}  // namespace ledgix::jet
