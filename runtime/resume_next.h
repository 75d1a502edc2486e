#pragma once

#include <utility>

#include "runtime_error.h"

namespace ledgix::runtime {

// Runs one statement. An error goes to `report`, and execution resumes behind this call. True when there was none.
template <class Statement, class Report>
bool ResumeNext(Statement&& statement, Report&& report) {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (const RuntimeError& error) {
        std::forward<Report>(report)(error);
        return false;
    }
}

}  // namespace ledgix::runtime
