#pragma once

#include <string>

#include "scoped_environment.h"
#include "temporary_folder.h"

namespace ledgix::test {

// An application folder with the report templates and the logo, in force as long as the object lives.
class ReportFolder {
public:
    ReportFolder();

    std::string path() const { return folder_.path(); }

private:
    TemporaryFolder folder_;
    ScopedEnvironment environment_{"LEDGIX_FOLDER", folder_.path()};
};

}  // namespace ledgix::test
