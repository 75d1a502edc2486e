#pragma once

#include <QPointF>
#include <QRectF>
#include <utility>
#include <vector>

#include "document_text.h"

namespace ledgix::preview {

// Where a part of a printed text is seen, in points on its page.
QRectF PlaceOf(const zq::Document& document, const TextPart& part);

// The character whose beginning lies nearest to a point of a page: the text's number and the character's. The text is
// one of the line that lies nearest. No character of a page without texts.
struct TextSpot {
    std::size_t index = 0;
    qsizetype character = -1;
};
TextSpot SpotAt(const zq::Document& document, int page, QPointF point);

// The point is on a text, not beside it.
bool IsOnText(const zq::Document& document, int page, QPointF point);

}  // namespace ledgix::preview
