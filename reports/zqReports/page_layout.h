#pragma once

#include <vector>

#include "band_layout.h"
#include "document.h"
#include "report_template.h"

namespace ledgix::zq {

// Breaks the printed bands into pages and adds title and footers: the document's title, page size and pages are set.
// A band is never parted. Bands that keep with the next one, and the first two and last two of a run, share a page
// where they fit on one. What cannot be seen is left out at the top of a page. A band higher than a page runs over it.
void LayOutPages(const ReportTemplate& report, const std::vector<BandInstance>& instances, Document& document);

}  // namespace ledgix::zq
