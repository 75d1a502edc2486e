#pragma once

#include "report_export.h"

namespace ledgix::preview {

// Saves a document's chart as a picture, PNG or SVG as the chosen name ends, in light colours and in a size of its own,
// since it is for letters and paper. Folder and name are proposed, and a failure is told, as for reports.
void SaveChart(const zq::Document& document, QWidget* owner, const FileChoice& choose);

}  // namespace ledgix::preview
