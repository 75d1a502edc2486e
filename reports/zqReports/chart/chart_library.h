#pragma once

#include "chart_sheet.h"

class QByteArray;
class QFont;
class QPainter;
class QPalette;
class QRectF;
class QSizeF;

// The border to the library that draws charts. Both sides are built together.
namespace ledgix::chart {

class ChartDrawer {
public:
    // Fills `place` with the chart, on the palette's base. The font's size is in pixels.
    virtual void Draw(const Sheet& sheet, const QPalette& palette, const QFont& font, QPainter& painter,
                      const QRectF& place) const = 0;
    // The chart as an SVG file's content, with its texts as texts.
    virtual QByteArray ToSvg(const Sheet& sheet, const QPalette& palette, const QFont& font,
                             const QSizeF& size) const = 0;

protected:
    ~ChartDrawer() = default;
};

// What the library offers under kChartDrawerName. The drawer lasts as long as the library.
using ChartDrawerFunction = const ChartDrawer* (*)();
inline constexpr const char* kChartDrawerName = "LedgixChartDrawer";
inline constexpr const char* kChartLibrary = "ledgix_charts";

}  // namespace ledgix::chart
