#pragma once

#include <QRawFont>
#include <map>
#include <tuple>

#include "document.h"

class QPainter;

namespace ledgix::zq {

// Typefaces with the glyphs that were drawn with them, by name, weight and thousandths of a pixel. Who draws pages
// again and again at one scale, as a window does, keeps one; its life ends before the application's.
using GlyphFonts = std::map<std::tuple<QString, int, int>, QRawFont>;

// Draws one page of a document; a unit of the painter's coordinates is a point (1/72 inch) from the page's upper left
// corner. Texts outside the painter's clip are left out.
void PaintPage(QPainter& painter, const Document& document, const Drawing& page, GlyphFonts* fonts = nullptr);

}  // namespace ledgix::zq
