#pragma once

#include <functional>
#include <string>

namespace ledgix::store {

// What the rule for finding the database depends on.
struct LocationSurroundings {
    std::string application_folder;  // without a separator at its end
    char separator = '/';
    // True when there is a file at a path; its name is compared without regard to case.
    std::function<bool(const std::string& path)> file_exists;
    // A setting of the section "Settings", or `fallback`.
    std::function<std::string(const std::string& name, const std::string& fallback)> setting;
};

// The running program's own.
LocationSurroundings ProgramSurroundings();

struct DatabaseLocation {
    std::string path;    // to open; there may be no such file, or its name may differ in case
    std::string notice;  // to show before opening; empty when there is none
};

// The setting "Networkable" decides: with a number other than 0 the database is at the setting "DatabaseLocation", or
// else, with a notice, beside the program; with 0 it is one folder above the program if there is one, and beside the
// program if not. Errors 13 and 6 when "Networkable" is no 16-bit number.
DatabaseLocation LocateDatabase(const LocationSurroundings& surroundings);

}  // namespace ledgix::store
