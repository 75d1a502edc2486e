#pragma once

#include <QFont>
#include <QString>

#include "document.h"

namespace ledgix::zq {

// Qt rounds sizes of typefaces to whole pixels. Texts are therefore measured and set at this one, and scaled.
inline constexpr int kTypefacePixels = 1000;

// The typeface of a text at that size, in its true shape. Widths that the layout counts on are those of Liberation
// Sans.
QFont TypefaceOf(const Document& document, const PrintedText& text);

// How a text stands in the width that the layout has for it, in whatever unit the two widths are.
struct TextFit {
    double shift = 0;    // of its beginning
    double stretch = 1;  // across
};
TextFit FitToWidth(const PrintedText& text, double natural, double wanted);

// How far from the page's left edge, in points, the given character begins; behind the last one, where the text ends.
double PlaceOfCharacter(const Document& document, const PrintedText& text, qsizetype character);

// The part of the spare room that lies before what is aligned.
double SpareBefore(Alignment alignment, double spare);

QString FromUtf8(const std::string& text);

}  // namespace ledgix::zq
