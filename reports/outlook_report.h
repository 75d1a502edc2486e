#pragma once

#include "cls_profile.h"
#include "cls_property.h"
#include "cls_report.h"

namespace ledgix::reports {

// The body of the ten-year report: one row a figure, one column a year. Errors pass to the report writer's trap.
void PrintOutlookReport(clsReport& report, model::clsProperty& property, const model::clsProfile& profile);

}  // namespace ledgix::reports
