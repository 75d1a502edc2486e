#include "drawn_icon.h"

#include <QPainter>
#include <QPixmap>
#include <algorithm>

namespace ledgix::shell {

void DrawnIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) {
    const int edge = std::min(rect.width(), rect.height());
    const QPoint corner = rect.topLeft() + QPoint((rect.width() - edge) / 2, (rect.height() - edge) / 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    draw_(*painter, QRectF(corner, QSizeF(edge, edge)));
    painter->restore();
}

QPixmap DrawnIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return picture;
}

QSize DrawnIcon::actualSize(const QSize& size, QIcon::Mode, QIcon::State) {
    return size;
}

QList<QSize> DrawnIcon::availableSizes(QIcon::Mode, QIcon::State) {
    QList<QSize> sizes;
    for (const int edge : edges_)
        sizes << QSize(edge, edge);
    return sizes;
}

}  // namespace ledgix::shell
