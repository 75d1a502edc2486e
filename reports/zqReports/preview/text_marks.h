#pragma once

#include <QRectF>
#include <vector>

#include "document_text.h"

class QPainter;
class QPalette;

namespace ledgix::preview {

// Marked places of texts, over which a page's texts stay as they are.
class TextMarks {
public:
    // Both live longer than the marks.
    TextMarks(const zq::Document& document, const DocumentText& text) : document_(document), text_(text) {}

    // Found places; the current one is marked stronger, -1 is none.
    void SetHits(std::vector<TextRange> hits, int current);
    void SetSelection(TextRange selection);

    const std::vector<TextRange>& hits() const { return hits_; }
    int current() const { return current_; }
    TextRange selection() const { return selection_; }

    // A unit of the painter is a point from the page's corner.
    void Paint(QPainter& painter, int page, const QPalette& palette) const;

    // Of the current hit, in points of its page; no page when there is none.
    struct Place {
        int page = -1;
        QRectF place;
    };
    Place CurrentPlace() const;

private:
    struct HitPlace {
        int hit;
        Place at;
    };

    std::vector<Place> PlacesOf(TextRange range) const;

    const zq::Document& document_;
    const DocumentText& text_;
    std::vector<TextRange> hits_;
    int current_ = -1;
    TextRange selection_;
    std::vector<HitPlace> hit_places_;
    std::vector<Place> selected_places_;
};

}  // namespace ledgix::preview
