#pragma once

#include <QTransform>

#include "document.h"

class QPrinter;

namespace ledgix::preview {

// Gives the printer the document's title, paper and orientation, the whole sheet being drawn on: a document has its
// margins in itself.
void SetUpPrinter(QPrinter& printer, const zq::Document& document);

// From a page's points to the points of a sheet: as large as on the page's own paper or, on smaller paper, as large as
// fits; centred.
QTransform OntoSheet(const zq::Document& document, QSizeF sheet);

// Prints the pages that the printer's settings choose. False when the printer fails.
bool PrintPages(QPrinter& printer, const zq::Document& document);

}  // namespace ledgix::preview
