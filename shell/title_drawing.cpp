#include "title_drawing.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

namespace ledgix::shell {

namespace {

constexpr double kTwipsPerPixel = 15;
constexpr double kPixelsPerPoint = 96.0 / 72.0;
const char* const kFirstFont = "Comic Sans MS";
// How far the first font's letters reach above their line, in parts of its size. It is tall: the part behind stands
// lower to be on one line with it, and so a font in its place has to be put there.
constexpr double kFirstFontAscent = 1.102;

// The font itself, or what comes nearest to it: a platform may choose one of quite another kind.
QString FamilyOf(const std::string& font) {
    if (font == kFirstFont && !FontIsInstalled(font)) {
        for (const char* relative : {"Comic Relief", "Comic Neue", "Chalkboard SE"})
            if (FontIsInstalled(relative))
                return relative;
        return "Arial";
    }
    return QString::fromStdString(font);
}

QFont FontOf(const TitlePart& part) {
    QFont font(FamilyOf(part.font));
    font.setPixelSize(qRound(part.points * kPixelsPerPoint));
    font.setBold(part.bold);
    return font;
}

}  // namespace

bool FontIsInstalled(const std::string& font) {
    const QString name = QString::fromStdString(font);
    return QFontInfo(QFont(name)).family().compare(name, Qt::CaseInsensitive) == 0;
}

TitleDrawing::TitleDrawing(const std::vector<TitlePart>& parts) {
    QPointF before_top;
    QPointF before_end;
    for (const TitlePart& part : parts) {
        const QPointF stated = QPointF(part.x, part.y) / kTwipsPerPixel;
        const QPointF top = part.continues ? QPointF(before_end.x(), before_top.y() + stated.y()) : stated;
        Text text{QString::fromStdString(part.text),
                  FontOf(part),
                  QColor(part.colour.red, part.colour.green, part.colour.blue),
                  {},
                  {}};
        const QFontMetricsF metrics(text.font);
        const QSizeF line(metrics.horizontalAdvance(text.text), metrics.height());
        const double ascent = part.font == kFirstFont ? text.font.pixelSize() * kFirstFontAscent : metrics.ascent();
        text.baseline = top + QPointF(0, ascent);
        text.place = QRectF(top, line) | metrics.boundingRect(text.text).translated(text.baseline);
        before_top = top;
        before_end = top + QPointF(line.width(), 0);
        texts_.push_back(text);
    }
}

QSizeF TitleDrawing::extent() const {
    QRectF all;
    for (const Text& text : texts_)
        all |= text.place;
    return {all.right(), all.bottom()};
}

void TitleDrawing::Paint(QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (const Text& text : texts_) {
        painter.setFont(text.font);
        painter.setPen(text.colour);
        painter.drawText(text.baseline, text.text);
    }
    painter.restore();
}

void PaintTitleGround(QPainter& painter, const QRect& place, Qt::Edges lines) {
    QLinearGradient ground(place.topLeft(), place.bottomLeft());
    ground.setColorAt(0, QColor(0xFF, 0xFF, 0xFF));
    ground.setColorAt(1, QColor(0xDC, 0xE8, 0xF5));
    painter.fillRect(place, ground);
    const QColor line(0x8F, 0xAA, 0xC6);
    if (lines.testFlag(Qt::TopEdge))
        painter.fillRect(QRect(place.left(), place.top(), place.width(), 1), line);
    if (lines.testFlag(Qt::BottomEdge))
        painter.fillRect(QRect(place.left(), place.bottom(), place.width(), 1), line);
    if (lines.testFlag(Qt::LeftEdge))
        painter.fillRect(QRect(place.left(), place.top(), 1, place.height()), line);
    if (lines.testFlag(Qt::RightEdge))
        painter.fillRect(QRect(place.right(), place.top(), 1, place.height()), line);
}

QColor GroundText() {
    return {0x1B, 0x24, 0x30};
}

QColor GroundFaintText() {
    return {0x44, 0x54, 0x66};
}

}  // namespace ledgix::shell
