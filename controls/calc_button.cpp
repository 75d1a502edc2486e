#include "calc_button.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <algorithm>

namespace ledgix::controls {

namespace {

// The picture is drawn on a grid of 14 by 16 units: a case, a display and two rows of three keys.
constexpr double kWide = 14;
constexpr double kHigh = 16;

void DrawCalculator(QPainter& painter, const QRectF& area, const QColor& ink) {
    const double unit = std::min(area.width() / kWide, area.height() / kHigh);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.center());
    painter.scale(unit, unit);
    painter.translate(-kWide / 2, -kHigh / 2);
    painter.setPen(QPen(ink, 1.4));
    painter.drawRoundedRect(QRectF(1, 1, kWide - 2, kHigh - 2), 1.8, 1.8);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(3.5, 3.5, 7, 2.6), 0.5, 0.5);
    for (const double top : {8.0, 10.8})
        for (const double left : {3.4, 6.1, 8.8})
            painter.drawRoundedRect(QRectF(left, top, 1.8, 1.8), 0.4, 0.4);
}

}  // namespace

CalcButton::CalcButton(QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
}

QSize CalcButton::sizeHint() const {
    const int side = fontMetrics().height() * 3 / 2;
    return {side, side};
}

void CalcButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const double margin = height() / 5.0;
    QRectF area = QRectF(rect()).adjusted(0, margin, 0, -margin);
    if (isDown())
        area.translate(style()->pixelMetric(QStyle::PM_ButtonShiftHorizontal, &option, this),
                       style()->pixelMetric(QStyle::PM_ButtonShiftVertical, &option, this));
    DrawCalculator(painter, area, palette().color(group, QPalette::ButtonText));
}

}  // namespace ledgix::controls
