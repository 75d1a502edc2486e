#pragma once

#include <QImage>
#include <QPalette>
#include <set>
#include <string>
#include <vector>

#include "report_pages.h"

namespace ledgix::test {

// The chart of an outlook over as many years as there are figures.
inline zq::Chart OutlookChart(const std::vector<double>& property, const std::vector<double>& mortgage,
                              const std::vector<double>& cash) {
    using Kind = zq::ChartSeries::Kind;
    zq::Chart chart{"Outlook: 12 Elm Street", "Year", {}, "Value", "Each year", {}};
    std::vector<double> investment;
    for (std::size_t i = 0; i < property.size(); ++i) {
        chart.categories.push_back(std::to_string(i));
        investment.push_back(property[i] - mortgage[i]);
    }
    chart.series = {{"Property Value", Kind::kLine, property},
                    {"Mortgage Value", Kind::kLine, mortgage},
                    {"Investment Value", Kind::kBetween, investment},
                    {"Cash Flow (after tax)", Kind::kBars, cash}};
    return chart;
}

// Ten years of a property; the mortgage is above its value at first, and the cash flow is negative in some years.
inline zq::Chart OutlookChart() {
    return OutlookChart({200000, 207000, 214245, 221744, 229505, 237538, 245852, 254457, 263363, 272581, 282121},
                        {202000, 197469, 192586, 187324, 181653, 175542, 168957, 161861, 154214, 145973, 137092},
                        {0, -1560, -1756, -1902, -2004, -2069, -2100, -1104, -82, 1038, 1974});
}

inline zq::Document ReportWithChart(const zq::Chart& chart = OutlookChart()) {
    zq::Document document = ReportOf(2, "Long Term Outlook");
    document.chart = chart;
    return document;
}

inline QPalette Dark() {
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    return palette;
}

inline std::set<QRgb> Colours(const QImage& image) {
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y) | 0xff000000);
    return colours;
}

}  // namespace ledgix::test
