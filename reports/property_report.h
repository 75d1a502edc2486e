#pragma once

#include "cls_profile.h"
#include "cls_property.h"
#include "cls_report.h"

namespace ledgix::reports {

// The body of the property analysis report: the first year of a purchase, and the owner's position before and after it.
// Errors pass to the report writer's trap.
void PrintPropertyReport(clsReport& report, model::clsProperty& property, const model::clsProfile& profile);

}  // namespace ledgix::reports
