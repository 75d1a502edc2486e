#pragma once

#include <iosfwd>
#include <string>

#include "commands.h"

namespace ledgix::cli {

// Checks the structure of a database file and prints what is wrong with it, one finding a line; as JSON a list of
// objects with the members code and text. With `strict`, also what other writers do now and then without harm. True
// when there is nothing. Errors of opening a file: 3024, 3051, 3343, 3031, 3112, 3049 when its length is no number of
// pages; 3260 when another program writes for too long.
bool CheckFile(const std::string& path, bool strict, Format format, std::ostream& out);

}  // namespace ledgix::cli
