#include "pixel_grid.h"

#include <QtMath>
#include <cmath>

namespace ledgix::controls {

PixelGrid::PixelGrid(const QPainter& painter)
    : to_device_(painter.deviceTransform()),
      from_device_(to_device_.inverted()),
      line_(qMax(1.0, std::floor(to_device_.m11())) / to_device_.m11()) {}

QRectF PixelGrid::Snap(const QRectF& area) const {
    const QRectF device = to_device_.mapRect(area);
    const QPointF top_left(qRound(device.left()), qRound(device.top()));
    const QPointF bottom_right(qRound(device.right()), qRound(device.bottom()));
    return from_device_.mapRect(QRectF(top_left, bottom_right));
}

}  // namespace ledgix::controls
