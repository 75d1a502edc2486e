#include "chart_style.h"

#include <array>

namespace ledgix::chart {

namespace {

struct Look {
    QRgb light;
    QRgb dark;
    QScatterSeries::MarkerShape mark;
    std::array<double, 2> dash;  // and gap, in widths of the line
};

constexpr std::array<Look, 4> kLooks{{
    {0xff0060a8, 0xff6cbcf2, QScatterSeries::MarkerShapeCircle, {0, 0}},
    {0xffc85000, 0xfff2a33c, QScatterSeries::MarkerShapeRectangle, {4, 2.5}},
    {0xff7a4a96, 0xffd5a6e6, QScatterSeries::MarkerShapeTriangle, {1.5, 2}},
    {0xff3d3d3d, 0xffd8d8d8, QScatterSeries::MarkerShapeRotatedRectangle, {8, 2.5}},
}};
constexpr double kLineWidth = 2;

QColor Mixed(const QColor& one, const QColor& other, float share) {
    return QColor::fromRgbF(one.redF() * share + other.redF() * (1 - share),
                            one.greenF() * share + other.greenF() * (1 - share),
                            one.blueF() * share + other.blueF() * (1 - share));
}

}  // namespace

ChartStyle::ChartStyle(const QPalette& palette)
    : ground(palette.color(QPalette::Base)),
      text(palette.color(QPalette::Text)),
      grid(Mixed(text, ground, 0.18F)),
      is_dark(ground.lightness() < text.lightness()) {
    between = Mixed(Line(0).pen.color(), ground, is_dark ? 0.32F : 0.2F);
    bars = QColor::fromRgb(is_dark ? 0xff3fc79a : 0xff00805c);
}

LineStyle ChartStyle::Line(qsizetype number) const {
    const Look& look = kLooks[static_cast<std::size_t>(number) % kLooks.size()];
    QPen pen(QColor::fromRgb(is_dark ? look.dark : look.light), kLineWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    if (look.dash[0] > 0)
        pen.setDashPattern({look.dash[0], look.dash[1]});
    return {pen, look.mark};
}

}  // namespace ledgix::chart
