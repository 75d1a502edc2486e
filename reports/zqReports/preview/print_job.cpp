#include "print_job.h"

#include <QPageRanges>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cmath>

#include "page_painter.h"
#include "page_sequence.h"

namespace ledgix::preview {

namespace {

constexpr double kPointsPerInch = 72;
// Papers that differ by less, in points, are the same.
constexpr double kSamePaper = 3;

PrintWish WishOf(const QPrinter& printer) {
    PrintWish wish;
    if (printer.printRange() == QPrinter::PageRange)
        for (const QPageRanges::Range& range : printer.pageRanges().toRangeList())
            wish.ranges.emplace_back(range.from, range.to);
    wish.copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    wish.collated = printer.collateCopies();
    wish.last_first = printer.pageOrder() == QPrinter::LastPageFirst;
    return wish;
}

}  // namespace

void SetUpPrinter(QPrinter& printer, const zq::Document& document) {
    printer.setDocName(QString::fromStdString(document.title));
    printer.setCreator("Vantreo Ledgix");
    printer.setFullPage(true);
    // Qt names sizes in portrait and turns them.
    const bool landscape = document.page_width > document.page_height;
    const QSizeF size(std::min(document.page_width, document.page_height),
                      std::max(document.page_width, document.page_height));
    printer.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::FuzzyMatch));
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

QTransform OntoSheet(const zq::Document& document, QSizeF sheet) {
    const double across = sheet.width() - document.page_width;
    const double down = sheet.height() - document.page_height;
    if (std::abs(across) < kSamePaper && std::abs(down) < kSamePaper)
        return {};
    const double scale = std::min({sheet.width() / document.page_width, sheet.height() / document.page_height, 1.0});
    QTransform onto;
    onto.translate((sheet.width() - document.page_width * scale) / 2,
                   (sheet.height() - document.page_height * scale) / 2);
    onto.scale(scale, scale);
    return onto;
}

bool PrintPages(QPrinter& printer, const zq::Document& document) {
    const std::vector<int> sequence = PageSequence(static_cast<int>(document.pages.size()), WishOf(printer));
    if (sequence.empty())
        return true;
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const double units = printer.resolution() / kPointsPerInch;
    const QTransform placed = OntoSheet(document, printer.pageLayout().fullRect(QPageLayout::Point).size()) *
                              QTransform::fromScale(units, units);
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        if (i > 0 && !printer.newPage())
            return false;
        painter.setWorldTransform(placed);
        zq::PaintPage(painter, document, document.pages[static_cast<std::size_t>(sequence[i])]);
    }
    return painter.end() && printer.printerState() != QPrinter::Error;
}

}  // namespace ledgix::preview
