#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "page_facts.h"
#include "page_torture.h"
#include "template_reader.h"

// The longest names and memos, the highest amounts, and pages that must hold them.
namespace ledgix::reports {
namespace {

using runtime::Paper;
using test::Figures;
using test::Memo;
using test::TorturePage;

class PageTorture : public testing::TestWithParam<TorturePage> {
protected:
    test::TortureReport report{GetParam()};
    const zq::Document& document = report.document();
    const zq::ReportTemplate measures = zq::ReadTemplate(
        test::Content(report.folder() + (GetParam().kind == kOutlookReport ? "/profile10.rdn" : "/profile.rdn")),
        GetParam().paper);
};

TEST_P(PageTorture, KeepsWithinTheMargins) {
    EXPECT_EQ(test::OutsideOf(document, measures), std::vector<std::string>());
}

TEST_P(PageTorture, LetsNoTextTouchAnother) {
    EXPECT_EQ(test::Collisions(document), std::vector<std::string>());
}

TEST_P(PageTorture, CanBeRead) {
    EXPECT_EQ(test::Unreadable(document), std::vector<std::string>());
}

TEST_P(PageTorture, ShowsEveryCharacterOnceAndInOrder) {
    const std::string printed = test::TextOfBands(document);
    EXPECT_EQ(test::TextOfPages(document), printed);
    std::string memo = test::WithoutBlanks(test::MemoText(GetParam().memo));
    EXPECT_TRUE(printed.ends_with(memo));
    EXPECT_NE(printed.find(test::WithoutBlanks(report.profile().ProfileName)), printed.npos);
}

TEST_P(PageTorture, BreaksPagesBetweenBandsOnly) {
    EXPECT_EQ(test::PartedBands(document), std::vector<std::string>());
    if (GetParam().memo != Memo::kNone) {
        EXPECT_GT(document.pages.size(), 3U);
    }
}

TEST_P(PageTorture, HasItsFooterOnEveryPage) {
    const std::string pages = std::to_string(document.pages.size());
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        const std::vector<std::string> expected{"Vantreo Ledgix  |  11/22/2026",
                                                "Profile : " + report.profile().ProfileName,
                                                "Page " + std::to_string(i + 1) + " of " + pages};
        EXPECT_EQ(test::FooterOf(document.pages[i]), expected);
    }
}

std::vector<TorturePage> AllPages() {
    std::vector<TorturePage> pages;
    for (const Paper paper : {Paper::kA4, Paper::kLetter})
        for (const ReportKind kind : {kProfileReport, kAnalysisReport, kOutlookReport}) {
            for (const Figures figures : {Figures::kHuge, Figures::kInDebt, Figures::kShort})
                pages.push_back({kind, figures, Memo::kNone, paper});
            for (const Memo memo : {Memo::kProse, Memo::kOneWord, Memo::kManyLines, Memo::kManyLetters})
                pages.push_back({kind, Figures::kHuge, memo, paper});
        }
    return pages;
}

INSTANTIATE_TEST_SUITE_P(All, PageTorture, testing::ValuesIn(AllPages()),
                         [](const auto& tested) { return test::NameOf(tested.param); });

// The ten-year report with a figure in every cell, which no property has.
class FullOutlook : public testing::TestWithParam<std::pair<Paper, const char*>> {};

TEST_P(FullOutlook, StaysOnePageThatCanBeRead) {
    const auto& [paper, figure] = GetParam();
    const test::FullOutlookReport outlook(paper, figure);
    const zq::Document& document = outlook.document();
    const zq::ReportTemplate measures = zq::ReadTemplate(test::Content(outlook.folder() + "/profile10.rdn"), paper);
    EXPECT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(test::OutsideOf(document, measures), std::vector<std::string>());
    EXPECT_EQ(test::Collisions(document), std::vector<std::string>());
    EXPECT_EQ(test::Unreadable(document), std::vector<std::string>());
    EXPECT_EQ(test::TextOfPages(document), test::TextOfBands(document));
}

INSTANTIATE_TEST_SUITE_P(All, FullOutlook,
                         testing::Values(std::pair{Paper::kA4, "-123456789012"},
                                         std::pair{Paper::kLetter, "-123456789012"},
                                         std::pair{Paper::kA4, "-999999999999.99"},
                                         std::pair{Paper::kLetter, "-999999999999.99"}));

}  // namespace
}  // namespace ledgix::reports
