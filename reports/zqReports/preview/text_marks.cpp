#include "text_marks.h"

#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <utility>

#include "text_places.h"

namespace ledgix::preview {

namespace {

// On white paper, whatever the colours of the screen; they darken what is drawn, so that texts stay readable.
constexpr QColor kHit(255, 236, 130);
constexpr QColor kCurrentHit(255, 173, 51);
constexpr QColor kCurrentEdge(176, 96, 0);

// A pale tint of the colour with which the system marks selections.
QColor SelectionColour(const QPalette& palette) {
    QColor colour = palette.color(QPalette::Highlight);
    colour.setHslF(colour.hslHueF() < 0 ? 0 : colour.hslHueF(), colour.hslSaturationF(), 0.8F);
    return colour;
}

}  // namespace

std::vector<TextMarks::Place> TextMarks::PlacesOf(TextRange range) const {
    std::vector<Place> places;
    for (const TextPart& part : text_.Parts(range))
        places.push_back({part.page, PlaceOf(document_, part)});
    return places;
}

void TextMarks::SetHits(std::vector<TextRange> hits, int current) {
    current_ = current;
    if (hits == hits_)
        return;
    hits_ = std::move(hits);
    hit_places_.clear();
    for (std::size_t i = 0; i < hits_.size(); ++i)
        for (const Place& place : PlacesOf(hits_[i]))
            hit_places_.push_back({static_cast<int>(i), place});
}

void TextMarks::SetSelection(TextRange selection) {
    selection_ = selection;
    selected_places_ = PlacesOf(selection);
}

TextMarks::Place TextMarks::CurrentPlace() const {
    const auto found = std::find_if(hit_places_.begin(), hit_places_.end(),
                                    [&](const HitPlace& place) { return place.hit == current_; });
    return found == hit_places_.end() ? Place() : found->at;
}

void TextMarks::Paint(QPainter& painter, int page, const QPalette& palette) const {
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.setPen(Qt::NoPen);
    painter.setBrush(SelectionColour(palette));
    for (const Place& selected : selected_places_)
        if (selected.page == page)
            painter.drawRect(selected.place);
    for (const auto& [hit, at] : hit_places_) {
        if (at.page != page)
            continue;
        painter.setPen(hit == current_ ? QPen(kCurrentEdge, 0.75) : QPen(Qt::NoPen));
        painter.setBrush(hit == current_ ? kCurrentHit : kHit);
        painter.drawRect(at.place);
    }
    painter.restore();
}

}  // namespace ledgix::preview
