#pragma once

#include <string>

namespace ledgix::shell {

struct Version {
    int major = 0;
    int minor = 0;
    int revision = 0;
};

// "Version 2.1"
std::string ShortVersionText(const Version& version);

// "Version 2.1.7"; a revision of 0 shows too.
std::string FullVersionText(const Version& version);

}  // namespace ledgix::shell
