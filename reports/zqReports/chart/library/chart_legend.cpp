#include "chart_legend.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

namespace ledgix::chart {

namespace {

constexpr double kSampleWidth = 34;
constexpr double kGap = 6;        // between a sample and its name
constexpr double kDistance = 20;  // between entries
constexpr double kLineSpace = 4;

using Kind = zq::ChartSeries::Kind;

void DrawMark(QPainter& painter, const QPointF& centre, QScatterSeries::MarkerShape shape) {
    const double half = kMarkSize / 2;
    const QRectF box(centre.x() - half, centre.y() - half, kMarkSize, kMarkSize);
    const QPointF top(centre.x(), box.top());
    switch (shape) {
        case QScatterSeries::MarkerShapeCircle:
            painter.drawEllipse(box);
            break;
        case QScatterSeries::MarkerShapeTriangle:
            painter.drawPolygon(QPolygonF{box.bottomLeft(), top, box.bottomRight()});
            break;
        case QScatterSeries::MarkerShapeRotatedRectangle:
            painter.drawPolygon(
                QPolygonF{top, {box.right(), centre.y()}, {centre.x(), box.bottom()}, {box.left(), centre.y()}});
            break;
        default:
            painter.drawRect(box);
    }
}

}  // namespace

PanelLegend::PanelLegend(const Panel& panel, const QFont& font, double width)
    : panel_(&panel), font_(font), heading_font_(font) {
    heading_font_.setBold(true);
    const QFontMetricsF metrics(font_);
    const double line = metrics.height() + kLineSpace;
    double x = 0;
    double y = 0;
    const auto place = [&](double entry) {
        if (x > 0 && x + entry > width) {
            x = 0;
            y += line;
        }
        places_.append(QRectF(x, y, entry, line));
        x += entry + kDistance;
    };
    // A text is drawn a little wider than it measures.
    place(QFontMetricsF(heading_font_).horizontalAdvance(QString::fromStdString(panel.heading)) + 2);
    for (const zq::ChartSeries& series : panel.series)
        place(kSampleWidth + kGap + metrics.horizontalAdvance(QString::fromStdString(series.name)) + 2);
    height_ = y + line;
}

void PanelLegend::DrawSample(QPainter& painter, const QRectF& place, Kind kind, const LineStyle& line,
                             const ChartStyle& style) const {
    const QPointF centre = place.center();
    if (kind == Kind::kLine) {
        painter.setPen(line.pen);
        painter.drawLine(QPointF(place.left(), centre.y()), QPointF(place.right(), centre.y()));
        painter.setPen(Qt::NoPen);
        painter.setBrush(line.pen.color());
        DrawMark(painter, centre, line.mark);
        return;
    }
    painter.setPen(kind == Kind::kBars ? QPen(Qt::NoPen) : QPen(line.pen.color(), 1));
    painter.setBrush(kind == Kind::kBars ? style.bars : style.between);
    painter.drawRect(QRectF(place.left(), centre.y() - 6, place.width(), 12));
}

void PanelLegend::Draw(QPainter& painter, const QPointF& corner, const ChartStyle& style) const {
    painter.save();
    painter.setPen(style.text);
    painter.setFont(heading_font_);
    painter.drawText(places_[0].translated(corner), Qt::AlignLeft | Qt::AlignVCenter,
                     QString::fromStdString(panel_->heading));
    painter.setFont(font_);
    qsizetype lines = 0;
    for (qsizetype i = 1; i < places_.size(); ++i) {
        const zq::ChartSeries& series = panel_->series[static_cast<std::size_t>(i - 1)];
        const QRectF place = places_[i].translated(corner);
        // A ground is framed as the line that it hangs on.
        const LineStyle line = style.Line(series.kind == Kind::kBetween ? 0 : lines);
        lines += series.kind == Kind::kLine ? 1 : 0;
        DrawSample(painter, QRectF(place.topLeft(), QSizeF(kSampleWidth, place.height())), series.kind, line, style);
        painter.setPen(style.text);
        painter.drawText(place.adjusted(kSampleWidth + kGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::fromStdString(series.name));
    }
    // Lines are drawn with whatever brush they find.
    painter.restore();
}

}  // namespace ledgix::chart
