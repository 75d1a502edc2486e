#include "chart_view.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <utility>

#include "chart_loader.h"

namespace ledgix::preview {

QFont ChartFont(const QFont& font) {
    QFont in_pixels = font;
    in_pixels.setPixelSize(QFontInfo(font).pixelSize());
    return in_pixels;
}

ChartView::ChartView(chart::Sheet sheet, const QString& description, QWidget* parent)
    : QWidget(parent), sheet_(std::move(sheet)) {
    // So that a screen reader comes across it.
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName("Chart");
    setAccessibleDescription(QString::fromStdString(sheet_.title) + ". " + description);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize ChartView::sizeHint() const {
    return {fontMetrics().height() * 38, fontMetrics().height() * 30};
}

QSize ChartView::minimumSizeHint() const {
    return {fontMetrics().height() * 20, fontMetrics().height() * 20};
}

void ChartView::DrawPicture() {
    const double ratio = devicePixelRatioF();
    picture_ = QPixmap(size() * ratio);
    picture_.setDevicePixelRatio(ratio);
    picture_.fill(palette().color(QPalette::Base));
    QPainter painter(&picture_);
    if (const chart::ChartDrawer* charts = Charts()) {
        charts->Draw(sheet_, palette(), ChartFont(font()), painter, rect());
        return;
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.setFont(font());
    painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap,
                     "The chart cannot be drawn, because Qt Charts is not installed.");
}

void ChartView::paintEvent(QPaintEvent*) {
    if (picture_.isNull() || picture_.devicePixelRatio() != devicePixelRatioF())
        DrawPicture();
    QPainter painter(this);
    painter.drawPixmap(0, 0, picture_);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.rect = rect().adjusted(2, 2, -2, -2);
    frame.backgroundColor = palette().color(QPalette::Base);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

void ChartView::resizeEvent(QResizeEvent*) {
    picture_ = {};
}

void ChartView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange) {
        picture_ = {};
        update();
    }
    QWidget::changeEvent(event);
}

void ChartView::focusInEvent(QFocusEvent*) {
    update();
}

void ChartView::focusOutEvent(QFocusEvent*) {
    update();
}

}  // namespace ledgix::preview
