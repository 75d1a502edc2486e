#pragma once

#include "regional_settings.h"

namespace ledgix::test {

// Makes a region's settings the ones in force as long as the object lives.
class ScopedRegion {
public:
    explicit ScopedRegion(const runtime::RegionalSettings& settings = runtime::UnitedStates())
        : before_(runtime::Region()) {
        runtime::InstallRegion(settings);
    }
    ~ScopedRegion() { runtime::InstallRegion(before_); }
    ScopedRegion(const ScopedRegion&) = delete;
    ScopedRegion& operator=(const ScopedRegion&) = delete;

private:
    runtime::RegionalSettings before_;
};

}  // namespace ledgix::test
