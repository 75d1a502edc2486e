#pragma once

#include <string>

namespace ledgix::store {

// Readies SQL text for the engine. Every "true" becomes "-1" and every "false" "0", inside quoted values too. When the
// apostrophes are odd in number, those that seem to stand inside a value are doubled: one opens a value when "=", "<",
// ">" or "ke" (of like) stands among the three characters before it, and closes one when " and", "  an", " or " or
// " ord" follows it or it is the last character; any other is doubled. Positions count characters.
// The rewritten text is the result and is left in `sql` as well. Error 5 when, in a text to be walked through, an
// apostrophe stands at position 2 or 3.
std::string FixSQLQuotes(std::string& sql);

}  // namespace ledgix::store
