#include "application_folder.h"

#include <cstdlib>

namespace ledgix::runtime {

std::string ApplicationFolder() {
    const char* chosen = std::getenv("LEDGIX_FOLDER");
    if (!chosen || !*chosen)
        return ProgramFolder();
    std::string folder = chosen;
    while (folder.size() > 1 && folder.back() == PathSeparator())
        folder.pop_back();
    return folder;
}

std::string ApplicationFile(std::string_view name) {
    return ApplicationFolder() + PathSeparator() + std::string(name);
}

}  // namespace ledgix::runtime
