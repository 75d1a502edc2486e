#pragma once

#include <filesystem>
#include <string>

namespace ledgix::test {

// Puts the report templates and the help file into an application folder.
inline void AddApplicationFiles(const std::string& folder) {
    for (const char* name :
         {"reports/templates/profile.rdn", "reports/templates/profile10.rdn", "shell/help/ledgix.hlp"}) {
        const std::filesystem::path source = std::filesystem::path(LEDGIX_SOURCE) / name;
        std::filesystem::copy(source, std::filesystem::path(folder) / source.filename());
    }
}

}  // namespace ledgix::test
