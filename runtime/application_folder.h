#pragma once

#include <string>
#include <string_view>

namespace ledgix::runtime {

// Where the program keeps its database, report templates, logs and help: the folder of the running program, unless the
// environment variable LEDGIX_FOLDER names another. UTF-8, no separator at the end.
std::string ApplicationFolder();

// A file of the application folder, with the platform's separator.
std::string ApplicationFile(std::string_view name);

// The platform's separator between the parts of a path.
char PathSeparator();

// The folder of the running program's file. Empty when the platform does not tell.
std::string ProgramFolder();

}  // namespace ledgix::runtime
