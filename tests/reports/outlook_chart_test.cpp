#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cases.h"
#include "cls_report.h"
#include "household_builder.h"
#include "household_file.h"
#include "message_recorder.h"
#include "report_folder.h"
#include "report_pieces.h"
#include "scoped_region.h"

namespace ledgix::reports {
namespace {

using test::Json;
using Kind = zq::ChartSeries::Kind;

std::string Cell(const zq::PrintedBand& band, const std::string& name) {
    for (const zq::PrintedField& field : band.fields)
        if (field.name == name)
            return field.text;
    return {};
}

// The printed row of this caption, year by year.
std::vector<std::string> PrintedRow(const zq::Document& document, const std::string& caption) {
    std::vector<std::string> row;
    for (const zq::PrintedBand& band : document.bands)
        if (Cell(band, "caption") == caption)
            for (int year = 0; year <= 10; ++year)
                row.push_back(Cell(band, "Year" + std::to_string(year)));
    return row;
}

// A cell of zero is printed empty.
std::vector<std::string> AsPrinted(const std::vector<double>& values) {
    std::vector<std::string> row;
    for (const double value : values)
        row.push_back(PlainNumber(value) == "0" ? "" : PlainNumber(value));
    return row;
}

void ExpectChartOfTheReport(const zq::Document& document) {
    ASSERT_TRUE(document.chart);
    const zq::Chart& chart = *document.chart;
    EXPECT_EQ(chart.category_title, "Year");
    EXPECT_EQ(chart.categories, (std::vector<std::string>{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}));
    ASSERT_EQ(chart.series.size(), 4U);
    for (const zq::ChartSeries& series : chart.series)
        EXPECT_EQ(AsPrinted(series.values), PrintedRow(document, series.name)) << series.name;
    EXPECT_EQ(chart.series[0].name, "Property Value");
    EXPECT_EQ(chart.series[0].kind, Kind::kLine);
    EXPECT_EQ(chart.series[1].name, "Mortgage Value");
    EXPECT_EQ(chart.series[1].kind, Kind::kLine);
    EXPECT_EQ(chart.series[2].name, "Investment Value");
    EXPECT_EQ(chart.series[2].kind, Kind::kBetween);
    EXPECT_EQ(chart.series[3].name, "Cash Flow (after tax)");
    EXPECT_EQ(chart.series[3].kind, Kind::kBars);
}

class OutlookChartCase : public testing::TestWithParam<Json> {};

TEST_P(OutlookChartCase, ShowsTheFiguresThatArePrinted) {
    const test::ReportFolder folder;
    const test::ScopedRegion region;
    const test::InstalledDatabase database{test::CaseContent(GetParam())};
    model::clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    clsReport report;
    report.Profile(profile);
    report.Property(profile.Property("P1-1"));
    report.ReportType(kOutlookReport);
    report.PrintReport();
    ASSERT_TRUE(report.Printed());
    ExpectChartOfTheReport(report.objReport().document());
    ASSERT_TRUE(report.objReport().document().chart);
    EXPECT_EQ(report.objReport().document().chart->title,
              "Outlook: " + GetParam().at("property").value("PropertyName", std::string()));
}

INSTANTIATE_TEST_SUITE_P(OutlookReport, OutlookChartCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("outlook_report.json"))), test::CaseName);

class SampleHousehold : public testing::Test {
protected:
    SampleHousehold() {
        profile.ProfileNumber = 1;
        profile.ReloadProfile();
        report.Profile(profile);
        report.Property(profile.Property("P1-1"));
    }

    const zq::Document& Run(ReportKind kind) {
        report.ReportType(kind);
        report.PrintReport();
        EXPECT_TRUE(report.Printed());
        EXPECT_TRUE(messages.messages().empty());
        return report.objReport().document();
    }

    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::ReportFolder folder;  // in force instead of the file's
    test::ScopedRegion region;
    test::MessageRecorder messages;
    test::InstalledDatabase database{file.path()};
    model::clsProfile profile;
    clsReport report;
};

TEST_F(SampleHousehold, HasAChartOfItsOutlook) {
    const zq::Document& document = Run(kOutlookReport);
    ExpectChartOfTheReport(document);
    ASSERT_TRUE(document.chart);
    EXPECT_GT(document.chart->series[0].values[10], 0);
}

TEST_F(SampleHousehold, HasNoChartOfItsOtherReports) {
    Run(kOutlookReport);
    EXPECT_FALSE(Run(kAnalysisReport).chart);
    EXPECT_FALSE(Run(kProfileReport).chart);
}

}  // namespace
}  // namespace ledgix::reports
