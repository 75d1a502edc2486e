#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

#include "pixel_grid.h"
#include "zq_tab_dialog.h"

class QPainter;

namespace ledgix::controls {

// Pixels that a tab takes to show a caption in full.
int CaptionWidth(const QWidget& control, const QString& caption);

// Draws a tab dialog in the colours of its palette. The outlines are single lines, Light on lit edges and Dark on
// shaded ones. The selected tab is higher than the others, has a bar of the highlight colour on top, and no line
// between it and the body.
class TabStripPainter {
public:
    TabStripPainter(QPainter& painter, const zqTabDialog& control, int hovered_tab);

    void Paint() const;

private:
    void PaintBody() const;
    void PaintTab(int tab) const;
    void PaintAccent(const QRectF& area) const;
    void PaintCaption(int tab, const QRectF& area) const;
    void PaintFocus(const QRectF& area) const;
    // A box without its bottom line.
    void PaintOutline(const QRectF& area) const;
    void Fill(const QRectF& area, const QColor& colour) const;
    QColor FillOf(int tab) const;

    QPainter& painter_;
    const zqTabDialog& control_;
    QPalette palette_;
    int hovered_;
    PixelGrid grid_;
};

}  // namespace ledgix::controls
