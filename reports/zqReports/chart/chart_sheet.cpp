#include "chart_sheet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "chart_figures.h"
#include "chart_scale.h"

namespace ledgix::chart {

namespace {

using Series = std::vector<zq::ChartSeries>;

constexpr int kStepsOfLines = 6;
constexpr int kStepsOfBars = 5;

struct Range {
    double least = 0;
    double most = 0;
};

Range RangeOf(const Series& all) {
    Range range;
    for (const zq::ChartSeries& series : all) {
        // What is between two lines is drawn on their scale.
        if (series.kind == zq::ChartSeries::Kind::kBetween)
            continue;
        for (const double value : series.values) {
            range.least = std::min(range.least, value);
            range.most = std::max(range.most, value);
        }
    }
    return range;
}

std::string Heading(const std::string& title, const Unit& unit, const std::string& symbol) {
    std::string heading = title;
    heading += " (";
    heading += symbol;
    if (!unit.name.empty() && !symbol.empty())
        heading += " ";
    heading += unit.name;
    heading += ")";
    return symbol.empty() && unit.name.empty() ? title : heading;
}

std::vector<Tick> Ticks(const Scale& scale, const runtime::RegionalSettings& region) {
    if (scale.step == 0)
        return {{0, FigureText(0, 0, region)}};
    std::vector<Tick> ticks;
    const auto count = std::lround((scale.most - scale.least) / scale.step);
    for (long i = 0; i <= count; ++i) {
        const double place = scale.least + static_cast<double>(i) * scale.step;
        ticks.push_back({place, FigureText(place, scale.decimals, region)});
    }
    return ticks;
}

void AddPanel(Sheet& sheet, Series series, const std::string& title, int steps,
              const runtime::RegionalSettings& region) {
    if (series.empty())
        return;
    Range range = RangeOf(series);
    const Unit unit = UnitFor(std::max(-range.least, range.most));
    range = {range.least / unit.size, range.most / unit.size};
    for (zq::ChartSeries& one : series)
        for (double& value : one.values)
            value /= unit.size;
    const Scale scale = ScaleFor(range.least, range.most, steps);
    sheet.panels.push_back({Heading(title, unit, region.currency_symbol), scale.least, scale.most, Ticks(scale, region),
                            std::move(series)});
}

}  // namespace

Sheet ToSheet(const zq::Chart& chart, const runtime::RegionalSettings& region) {
    Sheet sheet{chart.title, chart.category_title, chart.categories, {}};
    Series lines;
    Series bars;
    for (const zq::ChartSeries& series : chart.series)
        (series.kind == zq::ChartSeries::Kind::kBars ? bars : lines).push_back(series);
    AddPanel(sheet, std::move(lines), chart.lines_title, kStepsOfLines, region);
    AddPanel(sheet, std::move(bars), chart.bars_title, kStepsOfBars, region);
    return sheet;
}

}  // namespace ledgix::chart
