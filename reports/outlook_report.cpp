#include "outlook_report.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "conversions.h"
#include "formats.h"
#include "outlook.h"
#include "report_pieces.h"
#include "rounding.h"
#include "tax_module.h"

namespace ledgix::reports {

namespace {

using model::YearRecord;
using model::YearValue;

struct GridRow {
    std::string_view caption;
    double (*value)(const YearRecord&);
};

template <YearValue kValue>
double Stored(const YearRecord& year) {
    return year[kValue];
}

template <YearValue kValue>
double Negated(const YearRecord& year) {
    return -year[kValue];
}

double InvestmentValue(const YearRecord& year) {
    return year[YearValue::kPropertyValue] - year[YearValue::kMortgageBalance];
}

constexpr GridRow kRows[] = {
    {"Purchase Price", Stored<YearValue::kPurchasePrice>},
    {"Purchase Costs", Stored<YearValue::kPurchaseCosts>},
    {"Financing", Stored<YearValue::kFinancing>},
    {"Income", Stored<YearValue::kIncome>},
    {"Expenses", Stored<YearValue::kExpenses>},
    {"Interest", Stored<YearValue::kInterest>},
    {"Principle", Stored<YearValue::kPrincipal>},
    {"Cash (pre tax)", Stored<YearValue::kCashBeforeTax>},
    {"Depreciation (House)", Negated<YearValue::kHouseDepreciation>},
    {"Depreciation (Chattels)", Negated<YearValue::kChattelDepreciation>},
    {"Taxable Profit/Loss", Stored<YearValue::kTaxableResult>},
    {"Tax Refund", Stored<YearValue::kTaxRefund>},
    {"Cash Flow (after tax)", Stored<YearValue::kCashAfterTax>},
    {"  Per Month", [](const YearRecord& year) { return runtime::Round(year[YearValue::kCashAfterTax] / 12, 0); }},
    {"  Per Week", [](const YearRecord& year) { return runtime::Round(year[YearValue::kCashAfterTax] / 52, 0); }},
    {"Property Value", Stored<YearValue::kPropertyValue>},
    {"Mortgage Value", Stored<YearValue::kMortgageBalance>},
    {"Investment Value", InvestmentValue},
};

struct ChartRow {
    GridRow row;
    zq::ChartSeries::Kind kind;
};

constexpr ChartRow kChartRows[] = {
    {{"Property Value", Stored<YearValue::kPropertyValue>}, zq::ChartSeries::Kind::kLine},
    {{"Mortgage Value", Stored<YearValue::kMortgageBalance>}, zq::ChartSeries::Kind::kLine},
    {{"Investment Value", InvestmentValue}, zq::ChartSeries::Kind::kBetween},
    {{"Cash Flow (after tax)", Stored<YearValue::kCashAfterTax>}, zq::ChartSeries::Kind::kBars},
};

// Sets the cells of every year by its number and prints the row.
void PrintRow(clsReport& report, const std::function<std::string(std::size_t)>& cell) {
    zq::Band& body = report.objReport().band("body");
    for (std::size_t year = 0; year <= model::kLastReportYear; ++year)
        body.field("Year" + std::to_string(year)).SetText(cell(year));
    report.objReport().PrintBand("Body");
}

void PrintRow(clsReport& report, std::string_view caption, const std::function<std::string(std::size_t)>& cell) {
    report.objReport().band("body").field("caption").SetText(std::string(caption));
    PrintRow(report, [&](std::size_t year) {
        const std::string text = cell(year);
        return text == "0" ? std::string() : text;
    });
}

// The purchase itself has no return yet.
std::string ReturnText(const model::Outlook& outlook, std::size_t year) {
    if (year == 0 || !outlook.returns[year])
        return {};
    return runtime::FormatTwoDecimals(*outlook.returns[year]) + "%";
}

zq::Chart ToChart(const model::Outlook& outlook, const std::string& property) {
    zq::Chart chart{"Outlook: " + property, "Year", {}, "Value", "Each year", {}};
    for (std::size_t year = 0; year <= model::kLastReportYear; ++year)
        chart.categories.push_back(std::to_string(year));
    for (const ChartRow& line : kChartRows) {
        zq::ChartSeries series{std::string(line.row.caption), line.kind, {}};
        for (std::size_t year = 0; year <= model::kLastReportYear; ++year)
            series.values.push_back(line.row.value(outlook.records[year]));
        chart.series.push_back(std::move(series));
    }
    return chart;
}

}  // namespace

void PrintOutlookReport(clsReport& report, model::clsProperty& property, const model::clsProfile& profile) {
    const model::Outlook outlook = model::ComputeOutlook(property, profile, model::CalculateIncomeTax);
    zq::zqReports& engine = report.objReport();
    FillHeader(report, profile);
    engine.band("Header").field("Property").SetText("Property : " + property.PropertyName);
    engine.PrintBand("Header");
    engine.band("caption").field("caption").SetText(
        "This report does not include all possible variables and should be used as a rough guide only.");
    engine.PrintBand("Caption");
    PrintRow(report, [](std::size_t year) { return "Year " + std::to_string(year); });
    for (const GridRow& row : kRows)
        PrintRow(report, row.caption, [&](std::size_t year) { return PlainNumber(row.value(outlook.records[year])); });
    PrintRow(report, "Internal Rate of Return (IRR)", [&](std::size_t year) { return ReturnText(outlook, year); });
    engine.SetChart(ToChart(outlook, property.PropertyName));
}

}  // namespace ledgix::reports
