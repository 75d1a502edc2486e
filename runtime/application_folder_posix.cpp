#include <filesystem>
#include <system_error>

#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

#include "application_folder.h"

namespace ledgix::runtime {

char PathSeparator() {
    return '/';
}

std::string ProgramFolder() {
    std::error_code ignored;
#ifdef __APPLE__
    char path[4096];
    uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) != 0)
        return {};
    return std::filesystem::canonical(path, ignored).parent_path().string();
#else
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().string();
#endif
}

}  // namespace ledgix::runtime
