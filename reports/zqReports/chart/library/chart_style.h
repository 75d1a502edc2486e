#pragma once

#include <QColor>
#include <QList>
#include <QPalette>
#include <QPen>
#include <QScatterSeries>

// How series look. Lines differ in colour, dashes and the shape of their marks; the colours can be told apart without
// colour vision and stand out from a light and a dark ground by 3 to 1 or more.
namespace ledgix::chart {

struct LineStyle {
    QPen pen;
    QScatterSeries::MarkerShape mark = QScatterSeries::MarkerShapeCircle;
};

struct ChartStyle {
    explicit ChartStyle(const QPalette& palette);

    // Of the lines in their order; styles repeat behind the fourth.
    LineStyle Line(qsizetype number) const;

    QColor ground;
    QColor text;
    QColor grid;
    QColor between;
    QColor bars;
    bool is_dark = false;
};

inline constexpr double kMarkSize = 8;

}  // namespace ledgix::chart
