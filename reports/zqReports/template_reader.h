#pragma once

#include <string_view>

#include "regional_settings.h"
#include "report_template.h"

namespace ledgix::zq {

// A template's text as its measures for one kind of paper. Error 5 when it is no valid template; the description names
// the line. The syntax is described in README.md.
ReportTemplate ReadTemplate(std::string_view text, runtime::Paper paper);

}  // namespace ledgix::zq
