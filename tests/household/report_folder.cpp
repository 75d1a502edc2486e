#include "report_folder.h"

#include <filesystem>

namespace ledgix::test {

ReportFolder::ReportFolder() {
    for (const char* file : {"profile.rdn", "profile10.rdn", "reportlogo.bmp"})
        std::filesystem::copy(std::string(LEDGIX_SOURCE "/reports/templates/") + file, path() + "/" + file);
}

}  // namespace ledgix::test
