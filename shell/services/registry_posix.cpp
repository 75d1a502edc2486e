#include "file_registry.h"
#include "raw_registry.h"

namespace ledgix::services {

namespace {

std::string MachineWideFile() {
#ifdef __APPLE__
    return "/Library/Preferences/vantreo/ledgix.reg";
#else
    return "/etc/vantreo/ledgix.reg";
#endif
}

}  // namespace

RawRegistry& SystemRegistry() {
    static FileRegistry registry(MachineWideFile);
    return registry;
}

}  // namespace ledgix::services
