#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "record_windows.h"

namespace ledgix::model {

// The report writers of one record whose previews are open.
class OpenReports {
public:
    // Runs a report of this kind by a new writer. `property` is null for a report on the profile itself. The records
    // must outlive this object, or its Clear.
    void Run(std::int32_t kind, clsProfile& profile, clsProperty* property);

    // Closes all previews.
    void Clear() { writers_.clear(); }

private:
    std::vector<std::unique_ptr<ReportWriter>> writers_;
};

}  // namespace ledgix::model
