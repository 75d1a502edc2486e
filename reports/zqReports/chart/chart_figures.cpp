#include "chart_figures.h"

#include <algorithm>
#include <cmath>

#include "conversions.h"
#include "formats.h"
#include "rounding.h"

namespace ledgix::chart {

namespace {

constexpr double kLeastExponential = 1e15;

bool NeedsCents(const zq::Chart& chart) {
    const auto needs = [](double value) {
        const double cents = runtime::Round(value, 2);
        return cents != std::floor(cents);
    };
    return std::any_of(chart.series.begin(), chart.series.end(), [&](const zq::ChartSeries& series) {
        return std::any_of(series.values.begin(), series.values.end(), needs);
    });
}

int Decimals(const zq::Chart& chart) {
    return NeedsCents(chart) ? 2 : 0;
}

std::string CategoryText(const zq::Chart& chart, std::size_t category) {
    std::string text = chart.category_title;
    text += " ";
    text += chart.categories[category];
    return text;
}

void AppendLine(std::string& text, const std::string& heading, const std::vector<std::string>& cells) {
    text += heading;
    for (const std::string& cell : cells) {
        text += "\t";
        text += cell;
    }
    text += "\n";
}

}  // namespace

std::string FigureText(double amount, int decimals, const runtime::RegionalSettings& region) {
    if (std::abs(amount) >= kLeastExponential)
        return runtime::ToText(amount);
    runtime::RegionalSettings plain = region;
    plain.currency_symbol.clear();
    plain.space_between = false;
    plain.minus = runtime::RegionalSettings::Minus::kBeforeAll;
    std::string text = runtime::FormatCurrency(runtime::Round(amount, decimals), plain);
    const std::size_t surplus =
        decimals > 0 ? 2 - static_cast<std::size_t>(decimals) : 2 + plain.decimal_separator.size();
    text.resize(text.size() - surplus);
    return text;
}

Table ToTable(const zq::Chart& chart, const runtime::RegionalSettings& region) {
    const int decimals = Decimals(chart);
    Table table;
    for (const zq::ChartSeries& series : chart.series)
        table.columns.push_back(series.name);
    for (std::size_t row = 0; row < chart.categories.size(); ++row) {
        table.rows.push_back(CategoryText(chart, row));
        std::vector<std::string>& cells = table.cells.emplace_back();
        for (const zq::ChartSeries& series : chart.series)
            cells.push_back(FigureText(series.values[row], decimals, region));
    }
    return table;
}

std::string ToTabbed(const Table& table) {
    std::string text;
    AppendLine(text, {}, table.columns);
    for (std::size_t row = 0; row < table.rows.size(); ++row)
        AppendLine(text, table.rows[row], table.cells[row]);
    return text;
}

std::string Describe(const zq::Chart& chart, const runtime::RegionalSettings& region) {
    const int decimals = Decimals(chart);
    std::string text;
    for (const zq::ChartSeries& series : chart.series) {
        if (series.values.empty())
            continue;
        const auto [least, most] = std::minmax_element(series.values.begin(), series.values.end());
        const auto add = [&](const char* before, std::vector<double>::const_iterator value) {
            text += before;
            text += FigureText(*value, decimals, region);
            text += " in ";
            text += CategoryText(chart, static_cast<std::size_t>(value - series.values.begin()));
        };
        text += text.empty() ? "" : " ";
        text += series.name;
        add(": lowest ", least);
        add(", highest ", most);
        text += ".";
    }
    return text;
}

}  // namespace ledgix::chart
