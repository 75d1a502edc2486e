#pragma once

#include <QFont>
#include <QRectF>

#include "chart_sheet.h"
#include "chart_style.h"

class QPainter;

namespace ledgix::chart {

// The heading of a panel and, behind it, what its series look like; broken into lines where the width ends.
class PanelLegend {
public:
    PanelLegend(const Panel& panel, const QFont& font, double width);

    double Height() const { return height_; }
    void Draw(QPainter& painter, const QPointF& corner, const ChartStyle& style) const;

private:
    void DrawSample(QPainter& painter, const QRectF& place, zq::ChartSeries::Kind kind, const LineStyle& line,
                    const ChartStyle& style) const;

    const Panel* panel_;
    QFont font_;
    QFont heading_font_;
    QList<QRectF> places_;  // the heading's, then each series', from the legend's corner
    double height_ = 0;
};

}  // namespace ledgix::chart
