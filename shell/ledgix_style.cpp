#include "ledgix_style.h"

#include <QPainter>
#include <QPainterPath>

#include "drawn_icon.h"

namespace ledgix::shell {

namespace {

constexpr QRgb kBlue = 0x2A70B2;
constexpr QRgb kAmber = 0xF2B233;
constexpr QRgb kDarkInk = 0x1B2430;

// A character in the middle of a square, `height` parts of its edge high.
void DrawSign(QPainter& painter, const QRectF& square, const QString& sign, double height, double middle, QRgb ink) {
    QFont font("Arial");
    font.setBold(true);
    font.setPixelSize(qMax(1, qRound(square.height())));
    QPainterPath path;
    path.addText(0, 0, font, sign);
    const QRectF drawn = path.boundingRect();
    const double scale = square.height() * height / drawn.height();
    painter.translate(square.left() + square.width() / 2, square.top() + square.height() * middle);
    painter.scale(scale, scale);
    painter.translate(-drawn.center());
    painter.fillPath(path, QColor(ink));
}

void DrawQuestion(QPainter& painter, const QRectF& square) {
    const double margin = square.width() / 16;
    painter.setBrush(QColor(kBlue));
    painter.drawEllipse(square.adjusted(margin, margin, -margin, -margin));
    DrawSign(painter, square, "?", 0.52, 0.5, 0xFFFFFF);
}

void DrawExclamation(QPainter& painter, const QRectF& square) {
    const double edge = square.width();
    QPen round(QColor(kAmber), edge / 8);
    round.setJoinStyle(Qt::RoundJoin);
    painter.setPen(round);
    painter.setBrush(QColor(kAmber));
    painter.drawPolygon(QPolygonF({square.topLeft() + QPointF(edge * 0.5, edge * 0.16),
                                   square.topLeft() + QPointF(edge * 0.88, edge * 0.84),
                                   square.topLeft() + QPointF(edge * 0.12, edge * 0.84)}));
    DrawSign(painter, square, "!", 0.46, 0.58, kDarkInk);
}

QIcon Picture(const QString& name, DrawnIcon::Drawing draw) {
    return QIcon(new DrawnIcon(name, {32, 48, 64}, draw));
}

}  // namespace

LedgixStyle::LedgixStyle() : QProxyStyle("Fusion") {}

QIcon LedgixStyle::standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const {
    switch (kind) {
        case SP_MessageBoxQuestion:
            return Picture("ledgix-question", DrawQuestion);
        case SP_MessageBoxWarning:
            return Picture("ledgix-exclamation", DrawExclamation);
        default:
            return QProxyStyle::standardIcon(kind, option, widget);
    }
}

}  // namespace ledgix::shell
