#include "cls_report.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "fixed_clock.h"
#include "household_builder.h"
#include "message_recorder.h"
#include "report_folder.h"
#include "report_pieces.h"
#include "report_text.h"
#include "scoped_region.h"

namespace ledgix::reports {
namespace {

using test::Json;
using Message = test::MessageRecorder::Message;

const Json kRates = Json::parse(R"([{"upper": 0, "rate": 30}])");

class ReportWriter : public testing::Test {
protected:
    // The text of a run.
    static std::string Run(clsReport& report) {
        report.PrintReport();
        return report.Printed() ? zq::ToText(report.objReport().document()) : "not printed";
    }

    test::ReportFolder folder;
    test::ScopedRegion region;
    test::FixedClock clock{{2026, 11, 7, 9, 5, 3}};
    test::MessageRecorder messages;
    test::InstalledDatabase database{test::HouseholdBuilder().AddTaxRates(kRates).Finish()};
    model::clsProfile profile;
    model::clsProperty property;
};

TEST_F(ReportWriter, WithoutATemplateSaysAndShowsNothing) {
    std::filesystem::remove(folder.path() + "/profile.rdn");
    clsReport report;
    report.Profile(profile);
    EXPECT_EQ(Run(report), "not printed");
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(ReportWriter, OfAnUnknownTypeSaysAndShowsNothing) {
    clsReport report;
    report.Profile(profile);
    report.ReportType(3);
    EXPECT_EQ(Run(report), "not printed");
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(ReportWriter, ShowsAnErrorOfTheBodyUnderItsOwnTitle) {
    clsReport report;
    EXPECT_EQ(Run(report), "not printed");
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"91 - Object variable or With block variable not set",
                                                          runtime::kOkOnly, "clsGroup.PrintReport"}}));
}

TEST_F(ReportWriter, LogsAnErrorOfTheAnalysis) {
    property.MortgageTerm = 2731;
    clsReport report;
    report.Profile(profile);
    report.Property(property);
    report.ReportType(kAnalysisReport);
    EXPECT_EQ(Run(report), "not printed");
    EXPECT_EQ(messages.messages(), (std::vector<Message>{{"6 - Overflow", runtime::kOkOnly, "clsGroup.PrintReport"}}));
    EXPECT_EQ(test::Content(folder.path() + "/errNov26.log"), "07/11/26 09:05:03 6 - Overflow\r\n");
}

TEST_F(ReportWriter, DoesNotLogAnErrorOfTheOutlook) {
    property.MortgageTerm = 2731;
    clsReport report;
    report.Profile(profile);
    report.Property(property);
    report.ReportType(kOutlookReport);
    EXPECT_EQ(Run(report), "not printed");
    EXPECT_EQ(messages.messages().size(), 1U);
    EXPECT_FALSE(std::filesystem::exists(folder.path() + "/errNov26.log"));
}

TEST_F(ReportWriter, GivesTheSameReportOnASecondRun) {
    property.PurchasePrice = 200000;
    property.RentIncome = 15600;
    profile.IncSalary = 50000;
    clsReport report;
    report.Profile(profile);
    report.Property(property);
    report.ReportType(kAnalysisReport);
    const std::string first = Run(report);
    EXPECT_NE(first, "not printed");
    EXPECT_EQ(Run(report), first);
}

TEST_F(ReportWriter, PrintsAMemoAsLinesThatJoinedGiveItBack) {
    clsReport report;
    report.Profile(profile);
    report.PrintReport();
    ASSERT_TRUE(report.Printed());
    const std::size_t before = report.objReport().document().bands.size();
    std::string memo;
    for (int i = 0; i < 400; ++i)
        memo += "The " + std::to_string(i) + "th word of a long memo.  " + (i % 50 == 0 ? "\r\n\r\n" : "");
    report.PrintMemo(memo);
    std::string joined;
    const auto& bands = report.objReport().document().bands;
    for (std::size_t i = before; i < bands.size(); ++i)
        joined += bands[i].fields.front().text;
    EXPECT_EQ(joined, memo);
    EXPECT_GT(bands.size() - before, 50U);
}

TEST_F(ReportWriter, PrintsNothingForAnEmptyMemo) {
    clsReport report;
    report.Profile(profile);
    report.PrintReport();
    const std::size_t before = report.objReport().document().bands.size();
    report.PrintMemo("");
    EXPECT_EQ(report.objReport().document().bands.size(), before);
}

TEST(ReportNumbers, ArePlain) {
    EXPECT_EQ(PlainNumber(1234567.5), "1234567.5");
    EXPECT_EQ(PlainNumber(-1370), "-1370");
}

TEST(ReportNumbers, AreFreeOfBinaryNoise) {
    EXPECT_EQ(PlainNumber(100 - 0.904 * 100), "9.6");
    EXPECT_EQ(PlainNumber(12345.15 - 11891.55), "453.6");
}

TEST(ReportNumbers, HaveNoNegativeZero) {
    EXPECT_EQ(PlainNumber(-0.0), "0");
    EXPECT_EQ(PlainNumber(-0.0000001), "0");
    EXPECT_EQ(RoundedNumber(-0.4, 0), "0");
}

TEST(ReportNumbers, RoundHalvesToTheEvenNeighbour) {
    EXPECT_EQ(RoundedNumber(0.5, 0), "0");
    EXPECT_EQ(RoundedNumber(1.5, 0), "2");
    EXPECT_EQ(RoundedNumber(2.675, 2), "2.68");
}

// Keeps the texts of reports that are shown and printed.
class ShownReports : public zq::Preview {
public:
    ShownReports() { zq::InstallPreview(this); }
    ~ShownReports() override { zq::InstallPreview(nullptr); }
    ShownReports(const ShownReports&) = delete;
    ShownReports& operator=(const ShownReports&) = delete;

    struct Window : zq::PreviewWindow {
        bool IsOpen() const override { return true; }
    };

    std::unique_ptr<zq::PreviewWindow> Show(const zq::Document& document, std::function<void()> button) override {
        shown.push_back(zq::ToText(document));
        print_button = std::move(button);
        return std::make_unique<Window>();
    }
    void Print(const zq::Document& document) override { printed.push_back(zq::ToText(document)); }

    std::vector<std::string> shown;
    std::vector<std::string> printed;
    std::function<void()> print_button;
};

TEST_F(ReportWriter, NamesItsFilesByReportProfileAndProperty) {
    profile.ProfileName = "Hannah & Tom";
    property.PropertyName = "14 Harbour Terrace";
    const auto name = [&](std::int32_t kind) {
        clsReport report;
        report.Profile(profile);
        report.Property(property);
        report.ReportType(kind);
        report.PrintReport();
        return report.objReport().document().name;
    };
    EXPECT_EQ(name(kProfileReport), "Profile - Hannah & Tom");
    EXPECT_EQ(name(kAnalysisReport), "Analysis - Hannah & Tom - 14 Harbour Terrace");
    EXPECT_EQ(name(kOutlookReport), "Outlook - Hannah & Tom - 14 Harbour Terrace");
}

TEST_F(ReportWriter, PrintsWhatItHasShownWhenThePrintButtonIsPressed) {
    ShownReports reports;
    profile.ProfileName = "Household";
    profile.IncSalary = 70000;
    clsReport report;
    EXPECT_FALSE(report.InUse());
    report.Profile(profile);
    report.PrintReport();
    EXPECT_TRUE(report.InUse());
    ASSERT_EQ(reports.shown.size(), 1U);
    EXPECT_NE(reports.shown[0].find("Household"), std::string::npos);
    reports.print_button();
    EXPECT_EQ(reports.shown.size(), 1U);
    EXPECT_EQ(reports.printed, reports.shown);
}

}  // namespace
}  // namespace ledgix::reports
