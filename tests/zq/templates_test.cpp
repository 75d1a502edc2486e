#include <gtest/gtest.h>

#include <algorithm>

#include "cases.h"
#include "font_widths.h"
#include "report_fixture.h"

// The product's templates, filled as the reports fill them, on both papers.
namespace ledgix::zq {
namespace {

using nlohmann::json;
using runtime::Paper;

constexpr double kSlack = 1e-3;
constexpr double kSmallestReadable = 5;

struct Span {
    double left;
    double right;
    double baseline;
    std::string text;
};

// No text leaves the page's margins, overlaps its neighbour or is too small to read.
void ExpectNothingClipped(const Document& document, double margin) {
    for (const Drawing& page : document.pages) {
        std::vector<Span> spans;
        for (const PrintedText& text : page.texts) {
            EXPECT_GE(text.size, kSmallestReadable - kSlack) << text.text;
            EXPECT_GE(text.width, TextWidth(text.text, text.size, text.bold) - kSlack) << "narrowed: " << text.text;
            EXPECT_GE(text.left, margin - kSlack) << text.text;
            EXPECT_LE(text.left + text.width, document.page_width - margin + kSlack) << text.text;
            EXPECT_LT(text.baseline + kDescent * text.size, document.page_height) << text.text;
            spans.push_back({text.left, text.left + text.width, text.baseline, text.text});
        }
        std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) {
            return std::pair(a.baseline, a.left) < std::pair(b.baseline, b.left);
        });
        for (std::size_t i = 1; i < spans.size(); ++i)
            if (spans[i].baseline == spans[i - 1].baseline) {
                EXPECT_GT(spans[i].left, spans[i - 1].right) << spans[i - 1].text << " and " << spans[i].text;
            }
    }
}

class TemplatesTest : public testing::TestWithParam<Paper> {
protected:
    const Document& Run(const char* name, const json& bands) {
        EXPECT_TRUE(engine_.OpenTemplate(test::ProductFile(name))) << engine_.why();
        test::PrintCase(engine_, bands);
        engine_.Show();
        return engine_.document();
    }

    test::ScopedRegion region_{test::RegionWithPaper(GetParam())};
    zqReports engine_;
};

const double kPortraitMargin = 22 * test::kPointsPerMm;
const double kLandscapeMargin = 13 * test::kPointsPerMm;

json WithNames(json bands, const std::string& name) {
    bands[0]["fields"]["Profile"] = "Profile : " + name;
    if (bands[0]["fields"].contains("Property"))
        bands[0]["fields"]["Property"] = "Property : " + name;
    return bands;
}

TEST_P(TemplatesTest, HoldEveryReferenceReport) {
    for (const json& one : test::LoadCases("profile_report.json"))
        ExpectNothingClipped(Run("profile.rdn", one["bands"]), kPortraitMargin);
    for (const json& one : test::LoadCases("property_report.json"))
        ExpectNothingClipped(Run("profile.rdn", one["bands"]), kPortraitMargin);
    for (const json& one : test::LoadCases("outlook_report.json")) {
        ExpectNothingClipped(Run("profile10.rdn", one["bands"]), kLandscapeMargin);
        EXPECT_EQ(engine_.document().pages.size(), 1u);
    }
}

TEST_P(TemplatesTest, PrintTheHouseholdsReportsOnOnePage) {
    EXPECT_EQ(Run("profile.rdn", test::LoadCases("profile_report.json")[0]["bands"]).pages.size(), 1u);
    EXPECT_EQ(Run("profile.rdn", test::LoadCases("property_report.json")[0]["bands"]).pages.size(), 1u);
}

TEST_P(TemplatesTest, HoldAmountsOfTwelveDigits) {
    json property = test::LoadCases("property_report.json")[0]["bands"];
    for (json& band : property)
        if (band.contains("fields"))
            for (auto& [name, value] : band["fields"].items())
                if (value.is_object() && value.contains("currency"))
                    value["currency"] = "-123456789012.00";
    ExpectNothingClipped(Run("profile.rdn", property), kPortraitMargin);
    json outlook = test::LoadCases("outlook_report.json")[0]["bands"];
    for (json& band : outlook)
        for (auto& [name, value] : band["fields"].items())
            if (name.starts_with("Year"))
                value = "-123456789012.25";
    ExpectNothingClipped(Run("profile10.rdn", outlook), kLandscapeMargin);
    EXPECT_EQ(engine_.document().pages.size(), 1u);
}

TEST_P(TemplatesTest, HoldNamesOfFiftyWideLetters) {
    const std::string name(50, 'W');
    const json property = WithNames(test::LoadCases("property_report.json")[0]["bands"], name);
    ExpectNothingClipped(Run("profile.rdn", property), kPortraitMargin);
    const json outlook = WithNames(test::LoadCases("outlook_report.json")[0]["bands"], name);
    ExpectNothingClipped(Run("profile10.rdn", outlook), kLandscapeMargin);
    EXPECT_EQ(engine_.document().pages.size(), 1u);
}

TEST_P(TemplatesTest, SetTheYearHeadingApart) {
    const Document& document = Run("profile10.rdn", test::LoadCases("outlook_report.json")[0]["bands"]);
    for (const PrintedText& text : document.pages[0].texts) {
        if (text.text.starts_with("Year ")) {
            EXPECT_TRUE(text.bold) << text.text;
        }
        if (text.text == "Income") {
            EXPECT_FALSE(text.bold);
        }
    }
}

TEST_P(TemplatesTest, ShowTheLogoAndTheFooterOnTheFirstPage) {
    const Document& document = Run("profile.rdn", test::LoadCases("profile_report.json")[0]["bands"]);
    ASSERT_EQ(document.pages[0].pictures.size(), 1u);
    const std::vector<PrintedText>& texts = document.pages[0].texts;
    EXPECT_EQ(texts.back().text, "Page 1 of 1");
    EXPECT_EQ(texts[0].text, "Profile : Whitaker");
}

TEST_P(TemplatesTest, LeaveUnsetFieldsEmptyOnEveryRun) {
    const json first = test::LoadCases("property_report.json")[0]["bands"];
    const json second = test::LoadCases("profile_report.json")[0]["bands"];
    Run("profile.rdn", first);
    for (const PrintedBand& band : Run("profile.rdn", second).bands)
        for (const PrintedField& field : band.fields)
            if (field.name == "Title" || field.name == "Property" || field.name == "after") {
                EXPECT_EQ(field.text, "") << band.name << "." << field.name;
            }
}

TEST_P(TemplatesTest, SpellTheBandsAsTheReportsDo) {
    std::vector<std::string> names;
    for (const char* file : {"profile.rdn", "profile10.rdn"}) {
        ASSERT_TRUE(engine_.OpenTemplate(test::ProductFile(file)));
        for (const char* name : {"HEADER", "HEADING", "FREETEXT", "BLANK"})
            names.push_back(engine_.band(name).name());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Header", "Heading", "freetext", "Blank", "Header", "Heading",
                                               "freetext", "Blank"}));
    EXPECT_EQ(engine_.band("caption").name(), "Caption");
    EXPECT_EQ(engine_.band("body").name(), "Body");
    ASSERT_TRUE(engine_.OpenTemplate(test::ProductFile("profile.rdn")));
    EXPECT_EQ(engine_.band("table").name(), "Table");
    EXPECT_EQ(engine_.band("beforeafter").name(), "BeforeAfter");
    EXPECT_TRUE(engine_.band("beforeafter").fields().empty());
}

INSTANTIATE_TEST_SUITE_P(Papers, TemplatesTest, testing::Values(Paper::kA4, Paper::kLetter),
                         [](const auto& tested) { return std::string(tested.param == Paper::kA4 ? "A4" : "Letter"); });

TEST(ReportLogo, IsASmallUncompressedBitmapOf24Bits) {
    const std::string bitmap = test::Content(test::ProductFile("reportlogo.bmp"));
    ASSERT_GT(bitmap.size(), 54u);
    EXPECT_EQ(bitmap.substr(0, 2), "BM");
    EXPECT_EQ(bitmap[28], 24);
    EXPECT_EQ(bitmap[30], 0);
    EXPECT_LT(bitmap.size(), 250000u);
}

}  // namespace
}  // namespace ledgix::zq
