#include "page_list.h"

#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "page_painter.h"

namespace ledgix::preview {

namespace {

constexpr int kLongerSide = 130;  // of a picture, in pixels
constexpr int kRoom = 12;

}  // namespace

PageList::PageList(const zq::Document& document, QWidget* parent) : QListWidget(parent), document_(document) {
    const double scale = kLongerSide / std::max({document.page_width, document.page_height, 1.0});
    setIconSize(QSizeF(document.page_width * scale, document.page_height * scale).toSize());
    setViewMode(QListView::IconMode);
    setFlow(QListView::TopToBottom);
    setMovement(QListView::Static);
    setWrapping(false);
    setSpacing(kRoom / 2);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName("Pages");
    for (std::size_t i = 1; i <= document.pages.size(); ++i) {
        auto* item = new QListWidgetItem(QString::number(i), this);
        item->setData(Qt::AccessibleTextRole, QString("Page %1").arg(i));
        item->setTextAlignment(Qt::AlignHCenter);
    }
}

QSize PageList::sizeHint() const {
    return {iconSize().width() + 3 * kRoom + verticalScrollBar()->sizeHint().width(), iconSize().height() * 2};
}

void PageList::showEvent(QShowEvent* event) {
    QListWidget::showEvent(event);
    for (int i = 0; i < count(); ++i)
        if (item(i)->icon().isNull())
            item(i)->setIcon(Picture(document_.pages[static_cast<std::size_t>(i)]));
    // Places that were found without pictures are too small.
    doItemsLayout();
}

QIcon PageList::Picture(const zq::Drawing& page) const {
    QPixmap picture(iconSize() * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.save();
    const double scale = iconSize().width() / std::max(document_.page_width, 1.0);
    painter.scale(scale, scale);
    zq::PaintPage(painter, document_, page);
    painter.restore();
    painter.setPen(QColor(0, 0, 0, 90));
    painter.drawRect(QRectF(QPointF(), iconSize()).adjusted(0, 0, -1, -1));
    painter.end();
    QIcon icon(picture);
    // The chosen page stays white, too.
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

}  // namespace ledgix::preview
