#include "elided_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace ledgix::shell {

namespace {

// In pixels.
constexpr int kInset = 6;
constexpr int kLeastCharacters = 8;

}  // namespace

ElidedText::ElidedText(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ElidedText::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    update();
}

QSize ElidedText::sizeHint() const {
    return {fontMetrics().averageCharWidth() * kLeastCharacters + 2 * kInset, fontMetrics().height()};
}

void ElidedText::paintEvent(QPaintEvent*) {
    const QRect place = rect().adjusted(kInset, 0, -kInset, 0);
    const Qt::Alignment left = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(place, int(left) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text_, Qt::ElideMiddle, place.width()));
}

bool ElidedText::event(QEvent* event) {
    const bool cut = fontMetrics().horizontalAdvance(text_) > width() - 2 * kInset;
    if (event->type() != QEvent::ToolTip || !cut)
        return QWidget::event(event);
    // A path that looks like markup must not be taken for it.
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), "<span>" + text_.toHtmlEscaped() + "</span>",
                       this);
    return true;
}

}  // namespace ledgix::shell
