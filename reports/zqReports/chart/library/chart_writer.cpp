#include <QBuffer>
#include <QByteArray>
#include <QPainter>
#include <QSvgGenerator>

#include "chart_drawing.h"
#include "chart_library.h"

#ifdef _WIN32
#define LEDGIX_EXPORT __declspec(dllexport)
#else
#define LEDGIX_EXPORT __attribute__((visibility("default")))
#endif

namespace ledgix::chart {

namespace {

class Drawer final : public ChartDrawer {
public:
    void Draw(const Sheet& sheet, const QPalette& palette, const QFont& font, QPainter& painter,
              const QRectF& place) const override {
        DrawSheet(sheet, ChartStyle(palette), font, painter, place);
    }

    QByteArray ToSvg(const Sheet& sheet, const QPalette& palette, const QFont& font,
                     const QSizeF& size) const override {
        QByteArray content;
        QBuffer buffer(&content);
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setResolution(96);  // a unit is a pixel of CSS
        generator.setTitle(QString::fromStdString(sheet.title));
        generator.setSize(size.toSize());
        generator.setViewBox(QRectF(QPointF(0, 0), size));
        QPainter painter;
        if (!painter.begin(&generator))
            return {};
        Draw(sheet, palette, font, painter, QRectF(QPointF(0, 0), size));
        painter.end();
        return content;
    }
};

}  // namespace

}  // namespace ledgix::chart

extern "C" LEDGIX_EXPORT const ledgix::chart::ChartDrawer* LedgixChartDrawer() {
    static const ledgix::chart::Drawer drawer;
    return &drawer;
}
