#include "text_places.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "typeset.h"

namespace ledgix::preview {

namespace {

// Above and below the baseline, in parts of the size.
constexpr double kAbove = 0.93;
constexpr double kBelow = 0.27;

double Distance(double place, double from, double to) {
    return std::max({from - place, place - to, 0.0});
}

const std::vector<zq::PrintedText>& TextsOf(const zq::Document& document, int page) {
    return document.pages[static_cast<std::size_t>(page)].texts;
}

qsizetype CharacterAt(const zq::Document& document, const zq::PrintedText& text, double x) {
    const qsizetype size = zq::FromUtf8(text.text).size();
    qsizetype nearest = 0;
    double least = std::numeric_limits<double>::max();
    for (qsizetype i = 0; i <= size; ++i) {
        const double distance = std::abs(zq::PlaceOfCharacter(document, text, i) - x);
        if (distance >= least)
            break;
        least = distance;
        nearest = i;
    }
    return nearest;
}

}  // namespace

QRectF PlaceOf(const zq::Document& document, const TextPart& part) {
    const zq::PrintedText& text = TextsOf(document, part.page)[part.index];
    return {
        QPointF(zq::PlaceOfCharacter(document, text, part.first), text.baseline - kAbove * text.size),
        QPointF(zq::PlaceOfCharacter(document, text, part.first + part.length), text.baseline + kBelow * text.size)};
}

TextSpot SpotAt(const zq::Document& document, int page, QPointF point) {
    const std::vector<zq::PrintedText>& texts = TextsOf(document, page);
    TextSpot spot;
    std::pair<double, double> least{std::numeric_limits<double>::max(), 0};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const zq::PrintedText& text = texts[i];
        const std::pair away{
            Distance(point.y(), text.baseline - kAbove * text.size, text.baseline + kBelow * text.size),
            Distance(point.x(), text.left, text.left + text.width)};
        if (away >= least)
            continue;
        least = away;
        spot.index = i;
        spot.character = 0;
    }
    if (spot.character == 0)
        spot.character = CharacterAt(document, texts[spot.index], point.x());
    return spot;
}

bool IsOnText(const zq::Document& document, int page, QPointF point) {
    const std::vector<zq::PrintedText>& texts = TextsOf(document, page);
    return std::any_of(texts.begin(), texts.end(), [&](const zq::PrintedText& text) {
        return Distance(point.x(), text.left, text.left + text.width) == 0 &&
               Distance(point.y(), text.baseline - kAbove * text.size, text.baseline + kBelow * text.size) == 0;
    });
}

}  // namespace ledgix::preview
