#pragma once

#include "cls_profile.h"
#include "cls_report.h"

namespace ledgix::reports {

// The body of the profile report: income against expenses, assets against liabilities, each with its judgement. Errors
// pass to the report writer's trap.
void PrintProfileReport(clsReport& report, const model::clsProfile& profile);

}  // namespace ledgix::reports
