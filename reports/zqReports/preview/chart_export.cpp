#include "chart_export.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include "chart_loader.h"
#include "chart_view.h"
#include "files.h"
#include "regional_settings.h"
#include "runtime_error.h"

namespace ledgix::preview {

namespace {

constexpr QSize kSize(1000, 700);
constexpr int kDotsPerUnit = 2;

QPalette PaperColours() {
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

QByteArray ToPng(const chart::ChartDrawer& charts, const chart::Sheet& sheet) {
    QImage image(kSize * kDotsPerUnit, QImage::Format_RGB32);
    image.setDevicePixelRatio(kDotsPerUnit);
    QPainter painter(&image);
    charts.Draw(sheet, PaperColours(), ChartFont(QApplication::font()), painter, QRectF(QPointF(0, 0), kSize));
    painter.end();
    QByteArray content;
    QBuffer buffer(&content);
    image.save(&buffer, "PNG");
    return content;
}

QByteArray ToPicture(const zq::Chart& chart, const QString& path) {
    const bool is_svg = path.endsWith(".svg", Qt::CaseInsensitive);
    if (!is_svg && !path.endsWith(".png", Qt::CaseInsensitive))
        runtime::RaiseError(runtime::ErrorNumber::kDeviceIo,
                            "A chart is saved as PNG or SVG: the name has to end in .png or .svg.");
    const chart::ChartDrawer* charts = Charts();
    if (!charts)
        runtime::RaiseError(runtime::ErrorNumber::kDeviceIo, "Qt Charts, which draws charts, is not installed.");
    const chart::Sheet sheet = chart::ToSheet(chart, runtime::Region());
    return is_svg ? charts->ToSvg(sheet, PaperColours(), ChartFont(QApplication::font()), kSize)
                  : ToPng(*charts, sheet);
}

}  // namespace

void SaveChart(const zq::Document& document, QWidget* owner, const FileChoice& choose) {
    SaveFile({"chart", FileTitle(document)}, owner, choose,
             {"Save Chart", {}, "png", "PNG pictures", {{"svg", "SVG drawings"}}}, [&](const std::string& path) {
                 const QByteArray content = ToPicture(*document.chart, QString::fromStdString(path));
                 runtime::WriteFile(path,
                                    std::string_view(content.constData(), static_cast<std::size_t>(content.size())));
             });
}

}  // namespace ledgix::preview
