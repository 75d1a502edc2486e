#pragma once

#include <string>

namespace ledgix::shell {

// The start of the program, up to the shown main window. `command_line` is all that stands behind the program's name;
// if it is empty, the splash window is shown and waited for. False when an error has ended it: it was shown, and
// nothing of the program is left.
bool SubMain(const std::string& command_line);

// Ends what SubMain has begun: windows first, then profiles, then the database. Does nothing when nothing has begun.
void EndProgram();

}  // namespace ledgix::shell
