#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

#include "runtime_error.h"
#include "temporary_file.h"

namespace ledgix::runtime {

TemporaryFile::TemporaryFile(const std::string& prefix, const std::string& suffix) {
    std::error_code ignored;
    path_ = (std::filesystem::temp_directory_path(ignored) / (prefix + "-XXXXXX" + suffix)).string();
    const int descriptor = mkstemps(path_.data(), static_cast<int>(suffix.size()));
    if (descriptor < 0)
        RaiseError(ErrorNumber::kDeviceIo, "No temporary file can be made: " + path_);
    close(descriptor);
}

TemporaryFile::~TemporaryFile() {
    std::remove(path_.c_str());
}

}  // namespace ledgix::runtime
