#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cases.h"
#include "cls_report.h"
#include "formats.h"
#include "household_builder.h"
#include "message_recorder.h"
#include "report_folder.h"
#include "scoped_region.h"
#include "text.h"

namespace ledgix::reports {
namespace {

using test::Json;

// The member of an object whose name is this one in any case; empty text if there is none.
std::string FieldText(const zq::PrintedBand& band, const std::string& name) {
    for (const zq::PrintedField& field : band.fields)
        if (runtime::EqualsIgnoringCase(field.name, name))
            return field.text;
    ADD_FAILURE() << "band " << band.name << " has no field " << name;
    return {};
}

std::vector<std::string> Allowed(const Json& expected, const std::string& folder) {
    if (expected.is_string())
        return {expected.get<std::string>()};
    if (expected.contains("currency"))
        return {runtime::FormatCurrency(std::stod(expected.at("currency").get<std::string>()), runtime::Region())};
    if (expected.contains("picture"))
        return {runtime::ReplaceAll(runtime::ReplaceAll(expected.at("picture").get<std::string>(), "{app}", folder),
                                    "\\", "/")};
    return expected.at("oneOf").get<std::vector<std::string>>();
}

void ExpectBand(const zq::PrintedBand& band, const Json& expected, const std::string& folder) {
    EXPECT_TRUE(runtime::EqualsIgnoringCase(band.name, expected.at("band").get<std::string>())) << band.name;
    std::vector<std::string> listed;
    for (const auto& [name, text] : expected.at("fields").items()) {
        const std::vector<std::string> allowed = Allowed(text, folder);
        const std::string printed = FieldText(band, name);
        EXPECT_NE(std::find(allowed.begin(), allowed.end(), printed), allowed.end())
            << band.name << "." << name << " is '" << printed << "', expected " << text.dump();
        listed.push_back(name);
    }
    for (const zq::PrintedField& field : band.fields) {
        const bool is_listed = std::any_of(listed.begin(), listed.end(), [&](const std::string& name) {
            return runtime::EqualsIgnoringCase(name, field.name);
        });
        EXPECT_TRUE(is_listed || field.text.empty()) << band.name << "." << field.name << " is not set by the report";
    }
}

// Takes the lines of a paragraph, which joined give the paragraph back.
void ExpectMemo(const std::vector<zq::PrintedBand>& bands, std::size_t& at, const std::string& memo) {
    std::string joined;
    while (joined.size() < memo.size() && at < bands.size() && runtime::EqualsIgnoringCase(bands[at].name, "freetext"))
        joined += FieldText(bands[at++], "caption");
    EXPECT_EQ(joined, memo);
}

void ExpectBands(const zq::Document& document, const Json& expected, const std::string& folder) {
    std::size_t at = 0;
    for (const Json& item : expected) {
        if (item.contains("memo")) {
            ExpectMemo(document.bands, at, item.at("memo").get<std::string>());
            continue;
        }
        ASSERT_LT(at, document.bands.size());
        ExpectBand(document.bands[at++], item, folder);
    }
    EXPECT_EQ(at, document.bands.size());
}

class ReportCase : public testing::TestWithParam<Json> {
protected:
    // Runs the report twice, as the print button does; both runs must give the case's bands.
    void ExpectReport(ReportKind kind) {
        profile.ProfileNumber = 1;
        profile.ReloadProfile();
        clsReport report;
        report.Profile(profile);
        if (kind != kProfileReport)
            report.Property(profile.Property("P1-1"));
        report.ReportType(kind);
        for (int run = 1; run <= 2; ++run) {
            SCOPED_TRACE("run " + std::to_string(run));
            report.PrintReport();
            ASSERT_TRUE(report.Printed());
            ExpectBands(report.objReport().document(), GetParam().at("bands"), folder.path());
        }
        EXPECT_TRUE(messages.messages().empty());
    }

    test::ReportFolder folder;
    test::ScopedRegion region;
    test::MessageRecorder messages;
    test::InstalledDatabase database{test::CaseContent(GetParam())};
    model::clsProfile profile;
};

class ProfileReportCase : public ReportCase {};
class PropertyReportCase : public ReportCase {};
class OutlookReportCase : public ReportCase {};

TEST_P(ProfileReportCase, PrintsItsBands) {
    ExpectReport(kProfileReport);
}
TEST_P(PropertyReportCase, PrintsItsBands) {
    ExpectReport(kAnalysisReport);
}
TEST_P(OutlookReportCase, PrintsItsBands) {
    ExpectReport(kOutlookReport);
}

INSTANTIATE_TEST_SUITE_P(ProfileReport, ProfileReportCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("profile_report.json"))), test::CaseName);
INSTANTIATE_TEST_SUITE_P(PropertyReport, PropertyReportCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("property_report.json"))), test::CaseName);
INSTANTIATE_TEST_SUITE_P(OutlookReport, OutlookReportCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("outlook_report.json"))), test::CaseName);

}  // namespace
}  // namespace ledgix::reports
