#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <vector>

#include "title_parts.h"

class QPainter;

namespace ledgix::shell {

// Whether this system has a font of this name; one that only stands in for it does not count.
bool FontIsInstalled(const std::string& font);

// The product's name at its places on a window: 15 twips a pixel of the layout, 96 pixels an inch for the fonts,
// whatever the screen.
class TitleDrawing {
public:
    TitleDrawing() = default;
    explicit TitleDrawing(const std::vector<TitlePart>& parts);

    // The lowest right corner that any part touches, in pixels of the layout from the window's top left corner.
    QSizeF extent() const;

    void Paint(QPainter& painter) const;

private:
    struct Text {
        QString text;
        QFont font;
        QColor colour;
        QPointF baseline;
        QRectF place;  // all of the line and all that its letters reach
    };

    std::vector<Text> texts_;
};

// The light ground on which the title's colours are readable, with a line around it or under it.
void PaintTitleGround(QPainter& painter, const QRect& place, Qt::Edges lines);

// The colours of texts and of faint texts on that ground.
QColor GroundText();
QColor GroundFaintText();

}  // namespace ledgix::shell
