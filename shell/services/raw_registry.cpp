#include "raw_registry.h"

#include <cstdlib>

#include "file_registry.h"

namespace ledgix::services {

namespace {

RawRegistry* installed = nullptr;

std::string ChosenFile() {
    const char* chosen = std::getenv("LEDGIX_SETTINGS");
    return chosen ? chosen : "";
}

}  // namespace

void InstallRegistry(RawRegistry* registry) {
    installed = registry;
}

RawRegistry& Registry() {
    static FileRegistry chosen_file(ChosenFile);
    if (installed)
        return *installed;
    return ChosenFile().empty() ? SystemRegistry() : chosen_file;
}

}  // namespace ledgix::services
