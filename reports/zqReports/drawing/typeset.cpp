#include "typeset.h"

#include <QFontMetricsF>
#include <QStringList>

namespace ledgix::zq {

namespace {

// Widths that differ by less are the same typeface, set with kerning.
constexpr double kKerning = 0.06;
constexpr double kRounding = 0.001;

}  // namespace

QString FromUtf8(const std::string& text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

double SpareBefore(Alignment alignment, double spare) {
    return alignment == Alignment::kLeft ? 0 : alignment == Alignment::kCenter ? spare / 2 : spare;
}

QFont TypefaceOf(const Document& document, const PrintedText& text) {
    QFont font(QStringList{FromUtf8(document.typeface), "Liberation Sans", "Arial", "Helvetica"});
    font.setPixelSize(kTypefacePixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setBold(text.bold);
    // Figures stay in their columns.
    font.setKerning(text.alignment != Alignment::kRight);
    return font;
}

TextFit FitToWidth(const PrintedText& text, double natural, double wanted) {
    const bool fits = natural <= wanted * (1 + kRounding) && natural >= wanted * (1 - kKerning);
    const double stretch = fits || natural <= 0 ? 1 : wanted / natural;
    return {SpareBefore(text.alignment, wanted - natural * stretch), stretch};
}

double PlaceOfCharacter(const Document& document, const PrintedText& text, qsizetype character) {
    const QString content = FromUtf8(text.text);
    const QFontMetricsF measure(TypefaceOf(document, text));
    const double size = text.size / kTypefacePixels;
    const TextFit fit = FitToWidth(text, measure.horizontalAdvance(content) * size, text.width);
    return text.left + fit.shift + measure.horizontalAdvance(content.left(character)) * size * fit.stretch;
}

}  // namespace ledgix::zq
