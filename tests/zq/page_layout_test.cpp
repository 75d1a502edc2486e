#include <gtest/gtest.h>

#include "report_fixture.h"

namespace ledgix::zq {
namespace {

using test::kPointsPerMm;

// Pages of 257 mm between the margins.
constexpr double kBottom = 277 * kPointsPerMm;

const std::string kBands =
    "band Row\nline 10\nfield F\n"
    "band Tall\nline 200\nfield F\n"
    "band Heading heading\nbefore 10\nline 10\nfield F\n"
    "band Keep keep\nline 10\nfield F\n"
    "band Para run\nline 10\nfield F\n"
    "band Blank\nheight 10\n";

class PageLayoutTest : public test::ReportFixture {
protected:
    void SetUp() override { Open(kBands); }

    void PrintRows(int count) {
        for (int i = 1; i <= count; ++i)
            Print("Row", "F", "r" + std::to_string(i));
    }

    // "r24|r25 / r26": the last two texts of a page and the first two of the next.
    std::string AroundBreak() {
        const std::vector<Drawing>& pages = Show().pages;
        if (pages.size() < 2)
            return "one page";
        std::string before;
        std::string after;
        for (const PrintedText& text : pages[0].texts)
            before = before.substr(before.rfind('|') + 1) + (before.empty() ? "" : "|") + text.text;
        for (std::size_t i = 0; i < pages[1].texts.size() && i < 2; ++i)
            after += (i ? "|" : "") + pages[1].texts[i].text;
        return before + " / " + after;
    }
};

TEST_F(PageLayoutTest, FillsAPageBeforeItBeginsTheNext) {
    PrintRows(25);
    EXPECT_EQ(AroundBreak(), "one page");
    PrintRows(1);
    EXPECT_EQ(AroundBreak(), "r24|r25 / r1");
}

TEST_F(PageLayoutTest, NeverPartsABand) {
    PrintRows(6);
    Print("Tall", "F", "tall");
    EXPECT_EQ(AroundBreak(), "r5|r6 / tall");
    for (const Drawing& page : engine_.document().pages)
        for (const PrintedText& text : page.texts)
            EXPECT_LT(text.baseline, kBottom);
}

TEST_F(PageLayoutTest, KeepsAHeadingWithWhatFollows) {
    PrintRows(23);
    Print("Heading", "F", "heading");
    Print("Row", "F", "next");
    EXPECT_EQ(AroundBreak(), "r22|r23 / heading|next");
}

TEST_F(PageLayoutTest, LetsAHeadingStandWhereWhatFollowsFits) {
    PrintRows(22);
    Print("Heading", "F", "heading");
    Print("Row", "F", "next");
    EXPECT_EQ(AroundBreak(), "one page");
}

TEST_F(PageLayoutTest, KeepsAChainOfBandsTogetherWithTheBandBehindIt) {
    PrintRows(22);
    Print("Heading", "F", "heading");
    Print("Keep", "F", "columns");
    Print("Row", "F", "next");
    EXPECT_EQ(AroundBreak(), "r21|r22 / heading|columns");
}

TEST_F(PageLayoutTest, KeepsAHeadingWithTheBandBehindABlank) {
    PrintRows(22);
    Print("Heading", "F", "heading");
    engine_.PrintBand("Blank");
    Print("Row", "F", "next");
    EXPECT_EQ(AroundBreak(), "r21|r22 / heading|next");
}

TEST_F(PageLayoutTest, BreaksAChainThatNoPageHolds) {
    for (int i = 1; i <= 30; ++i)
        Print("Keep", "F", "k" + std::to_string(i));
    EXPECT_EQ(AroundBreak(), "k24|k25 / k26|k27");
}

TEST_F(PageLayoutTest, LeavesAHeadingWithNothingBehindItWhereItIs) {
    PrintRows(3);
    Print("Heading", "F", "heading");
    EXPECT_EQ(AroundBreak(), "one page");
}

TEST_F(PageLayoutTest, LeavesOutABlankAtTheTopOfAPageButNotFromTheList) {
    PrintRows(25);
    engine_.PrintBand("Blank");
    Print("Row", "F", "next");
    Show();
    EXPECT_EQ(engine_.document().bands[25].name, "Blank");
    EXPECT_NEAR(Find("next").baseline, Find("r1").baseline, 1e-6);
}

TEST_F(PageLayoutTest, HasNoPageForBlanksAtTheEnd) {
    PrintRows(25);
    for (int i = 0; i < 60; ++i)
        engine_.PrintBand("Blank");
    EXPECT_EQ(AroundBreak(), "one page");
}

TEST_F(PageLayoutTest, LeavesOutTheSpaceBeforeAHeadingAtTheTopOfAPage) {
    PrintRows(25);
    Print("Heading", "F", "heading");
    Print("Row", "F", "next");
    Show();
    EXPECT_NEAR(Find("heading").baseline, Find("r1").baseline, 1e-6);
}

TEST_F(PageLayoutTest, LeavesTheSpaceBeforeAndAfterABand) {
    Open("band A\nbefore 3\nafter 4\nline 10\nfield F\n");
    Print("A", "F", "first");
    Print("A", "F", "second");
    Show();
    EXPECT_NEAR(Find("second").baseline - Find("first").baseline, 17 * kPointsPerMm, 1e-6);
}

TEST_F(PageLayoutTest, LeavesNoSingleLineOfAParagraphAtTheFootOfAPage) {
    PrintRows(24);
    for (const char* line : {"p1", "p2", "p3", "p4"})
        Print("Para", "F", line);
    EXPECT_EQ(AroundBreak(), "r23|r24 / p1|p2");
}

TEST_F(PageLayoutTest, CarriesNoSingleLineOfAParagraphToAPage) {
    PrintRows(22);
    for (const char* line : {"p1", "p2", "p3", "p4"})
        Print("Para", "F", line);
    EXPECT_EQ(AroundBreak(), "p1|p2 / p3|p4");
}

TEST_F(PageLayoutTest, EndsAParagraphAtALineBreak) {
    PrintRows(24);
    Print("Para", "F", "single\r\n");
    for (const char* line : {"p1", "p2"})
        Print("Para", "F", line);
    EXPECT_EQ(AroundBreak(), "r24|single / p1|p2");
}

TEST_F(PageLayoutTest, HasOnePageForAReportWithoutBands) {
    EXPECT_EQ(Show().pages.size(), 1u);
    EXPECT_EQ(PageTexts(0), "");
}

TEST_F(PageLayoutTest, BreaksAfreshEachTimeItIsShown) {
    PrintRows(26);
    EXPECT_EQ(Show().pages.size(), 2u);
    EXPECT_EQ(Show().pages.size(), 2u);
    PrintRows(25);
    EXPECT_EQ(Show().pages.size(), 3u);
}

class FooterTest : public test::ReportFixture {
protected:
    void SetUp() override {
        Open(
            "title \"{Row.F} of {date}\"\n"
            "footer\nbefore 5\nline 10\nlabel \"{program}\"\nlabel \"{date}\" align center\n"
            "label \"Page {page} of {pages}\" align right\n"
            "band Row\nline 10\nfield F\n");
    }
};

TEST_F(FooterTest, StandsOnEveryPageBehindTheBands) {
    for (int i = 1; i <= 25; ++i)
        Print("Row", "F", "r" + std::to_string(i));
    ASSERT_EQ(Show().pages.size(), 2u);
    EXPECT_EQ(PageTexts(1), "r25|Vantreo Ledgix|2/14/2026|Page 2 of 2");
    EXPECT_TRUE(PageTexts(0).ends_with("r24|Vantreo Ledgix|2/14/2026|Page 1 of 2"));
    EXPECT_NEAR(Find("Page 1 of 2").baseline, kBottom - 5 * kPointsPerMm + 10 * (0.905 - 0.212) / 2, 1e-6);
}

TEST_F(FooterTest, IsNoPrintedBand) {
    Print("Row", "F", "r1");
    EXPECT_EQ(Show().bands.size(), 1u);
}

TEST_F(FooterTest, WritesTheDateAsTheRegionDoes) {
    runtime::RegionalSettings region = test::RegionWithPaper(runtime::Paper::kA4);
    region.short_date = "dd.mm.yyyy";
    const test::ScopedRegion german(region);
    Print("Row", "F", "r1");
    Show();
    EXPECT_EQ(PageTexts(0), "r1|Vantreo Ledgix|14.02.2026|Page 1 of 1");
}

TEST_F(FooterTest, LeavesTheTitleToTheFirstPrintedText) {
    engine_.PrintBand("Row");
    Print("Row", "F", "first");
    Print("Row", "F", "second");
    EXPECT_EQ(Show().title, "first of 2/14/2026");
}

}  // namespace
}  // namespace ledgix::zq
