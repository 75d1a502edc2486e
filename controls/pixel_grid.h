#pragma once

#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace ledgix::controls {

// The pixels of the device under a painter. Edges that lie on them are crisp, and strips that share an edge meet
// without a seam, at every scale factor.
class PixelGrid {
public:
    explicit PixelGrid(const QPainter& painter);

    // The area with each edge moved to the nearest border between device pixels.
    QRectF Snap(const QRectF& area) const;
    // Thickness of a line of about one device-independent pixel.
    qreal line() const { return line_; }

private:
    QTransform to_device_;
    QTransform from_device_;
    qreal line_;
};

}  // namespace ledgix::controls
