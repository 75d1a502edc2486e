#pragma once

#include <string>

namespace ledgix::runtime {

// A new, empty file in the system's folder for temporary files, private to the user. It goes with the object.
class TemporaryFile {
public:
    // Error 57 when it cannot be made.
    TemporaryFile(const std::string& prefix, const std::string& suffix);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace ledgix::runtime
