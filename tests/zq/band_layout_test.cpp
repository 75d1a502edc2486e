#include <gtest/gtest.h>

#include "font_widths.h"
#include "report_fixture.h"

namespace ledgix::zq {
namespace {

using test::kPointsPerMm;

constexpr double kMargin = 20 * kPointsPerMm;
constexpr double kNear = 1e-6;

class BandLayoutTest : public test::ReportFixture {};

TEST_F(BandLayoutTest, PlacesTextsByTheirAlignment) {
    Open(
        "band A\nline 6\nfield F from 0 to 40 align left\nfield G from 50 to 90 align center\n"
        "field H from 100 to 140 align right\n");
    engine_.band("A").field("F").SetText("left");
    engine_.band("A").field("G").SetText("centre");
    Print("A", "H", "right");
    Show();
    EXPECT_NEAR(Find("left").left, kMargin, kNear);
    EXPECT_NEAR(Find("right").left + Find("right").width, kMargin + 140 * kPointsPerMm, kNear);
    EXPECT_NEAR(Find("centre").left + Find("centre").width / 2, kMargin + 70 * kPointsPerMm, kNear);
    EXPECT_NEAR(Find("left").width, TextWidth("left", 10, false), kNear);
}

TEST_F(BandLayoutTest, SetsTextsOfALineOnOneBaseline) {
    Open("band A\nline 8\nfield F size 8\nfield G from 50 to 90 size 14\n");
    engine_.band("A").field("F").SetText("small");
    Print("A", "G", "large");
    Show();
    EXPECT_NEAR(Find("small").baseline, Find("large").baseline, kNear);
    const double middle = Find("large").baseline - 14 * (kAscent - kDescent) / 2;
    EXPECT_NEAR(middle, kMargin + 4 * kPointsPerMm, kNear);
}

TEST_F(BandLayoutTest, ShrinksATextThatIsTooWideForItsPlace) {
    Open("band A\nline 6\nfield F from 0 to 30 size 12 least 6 align right\n");
    Print("A", "F", "-$123,456,789,012.00");
    Print("A", "F", "$1.00");
    Show();
    const PrintedText wide = Find("-$123,456,789,012.00");
    EXPECT_NEAR(wide.width, 30 * kPointsPerMm, kNear);
    EXPECT_LT(wide.size, 12);
    EXPECT_GT(wide.size, 6);
    EXPECT_NEAR(wide.width, TextWidth(wide.text, wide.size, false), kNear);
    EXPECT_EQ(Find("$1.00").size, 12);
}

TEST_F(BandLayoutTest, SetsATextNarrowerThatIsTooWideAtItsLeastSize) {
    Open("band A\nline 6\nfield F from 0 to 15 size 12 least 8\n");
    Print("A", "F", "-123456789012.25");
    Show();
    const PrintedText text = Find("-123456789012.25");
    EXPECT_EQ(text.size, 8);
    EXPECT_NEAR(text.width, 15 * kPointsPerMm, kNear);
    EXPECT_LT(text.width, TextWidth(text.text, 8, false));
}

TEST_F(BandLayoutTest, ShrinksEvenFieldsOfABandTogether) {
    Open("band A\nline 6\nfield F from 0 to 40\nfield G from 50 to 80 even\nfield H from 90 to 120 even\n");
    Print("A", "G", "12");
    engine_.band("A").field("F").SetText("caption");
    engine_.band("A").field("G").SetText("34");
    Print("A", "H", "-$123,456,789,012.00");
    Show();
    const double size = Find("-$123,456,789,012.00").size;
    EXPECT_LT(size, 10);
    EXPECT_EQ(Find("12").size, size);
    EXPECT_EQ(Find("34").size, size);
    EXPECT_EQ(Find("caption").size, 10);
}

TEST_F(BandLayoutTest, WrapsATextAndMakesTheBandHigher) {
    Open("band A\nline 6\nfield F from 0 to 25 wrap\nband B\nline 6\nfield F\n");
    Print("A", "F", "one two three four five six seven");
    Print("B", "F", "below");
    Show();
    EXPECT_EQ(PageTexts(0), "one two three|four five six|seven|below");
    EXPECT_NEAR(Find("seven").baseline - Find("one two three").baseline, 2 * 12.5, kNear);
    EXPECT_NEAR(Find("below").baseline - Find("seven").baseline, 6 * kPointsPerMm, kNear);
}

TEST_F(BandLayoutTest, WrapsAtLineBreaksInTheText) {
    Open("band A\nline 6\nfield F wrap\n");
    Print("A", "F", "one\r\ntwo");
    Show();
    EXPECT_EQ(PageTexts(0), "one|two");
}

TEST_F(BandLayoutTest, TriesSmallerSizesBeforeItWraps) {
    Open("band A\nline 6\nfield F from 0 to 50 size 12 least 9 wrap\n");
    Print("A", "F", "a little too wide for this one line");
    Print("A", "F", "and this is far too wide for the whole of this one line");
    Show();
    EXPECT_LT(Find("a little too wide for this one line").size, 12);
    EXPECT_EQ(Find("and this is far too wide for").size, 12);
    EXPECT_EQ(Find("the whole of this one line").size, 12);
}

TEST_F(BandLayoutTest, StretchesATextOverEmptyOnesBehindIt) {
    Open(
        "band A\nline 6\nfield F from 0 to 40\nfield G from 50 to 90 align right stretch\n"
        "field H from 100 to 140 align right\n");
    Print("A", "G", "alone");
    engine_.band("A").field("G").SetText("first");
    Print("A", "H", "second");
    Show();
    EXPECT_NEAR(Find("alone").left + Find("alone").width, kMargin + 140 * kPointsPerMm, kNear);
    EXPECT_NEAR(Find("first").left + Find("first").width, kMargin + 90 * kPointsPerMm, kNear);
}

TEST_F(BandLayoutTest, ColoursNegativeAmountsInEveryRegionsWriting) {
    Open("colour loss #aa0000\nband A\nline 6\nfield F colour #0000aa negative loss\n");
    for (const char* amount : {"-$1.00", "($1.00)", "$-1.00", "1,00- \xE2\x82\xAC",
                               "\xE2\x88\x92"
                               "1"})
        Print("A", "F", amount);
    for (const char* other : {"$1.00", "well-kept", "0.00%"})
        Print("A", "F", other);
    for (const PrintedText& text : Show().pages[0].texts) {
        const bool negative = text.text != "$1.00" && text.text != "well-kept" && text.text != "0.00%";
        EXPECT_EQ(text.colour, negative ? (Colour{0xaa, 0, 0}) : (Colour{0, 0, 0xaa})) << text.text;
    }
}

TEST_F(BandLayoutTest, DressesAnInstanceWhoseFieldIsEmptyOrHasAText) {
    Open(
        "band A\nline 6\nfield F from 0 to 40\nfield G from 50 to 90\n"
        "when F empty bold fill #eeeeee rule bottom weight 2\nwhen F is \"x\" \"y\" colour #0000aa\n");
    Print("A", "G", "heading");
    engine_.band("A").field("F").SetText("y");
    Print("A", "G", "coloured");
    engine_.band("A").field("F").SetText("z");
    Print("A", "G", "plain");
    const Drawing& page = Show().pages[0];
    EXPECT_TRUE(Find("heading").bold);
    EXPECT_FALSE(Find("coloured").bold);
    EXPECT_EQ(Find("coloured").colour, (Colour{0, 0, 0xaa}));
    EXPECT_EQ(Find("plain").colour, Colour());
    ASSERT_EQ(page.boxes.size(), 1u);
    EXPECT_NEAR(page.boxes[0].top, kMargin, kNear);
    EXPECT_NEAR(page.boxes[0].height, 6 * kPointsPerMm, kNear);
    ASSERT_EQ(page.lines.size(), 1u);
    EXPECT_EQ(page.lines[0].weight, 2);
}

TEST_F(BandLayoutTest, DrawsRulesAtTheEdgesOfTheBand) {
    Open("band A\nline 6\nfield F wrap\nrule top\nrule bottom from 10 to -10\n");
    Print("A", "F", "one\ntwo");
    const std::vector<PrintedLine>& lines = Show().pages[0].lines;
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_NEAR(lines[0].y1, kMargin, kNear);
    EXPECT_NEAR(lines[1].y1, kMargin + 6 * kPointsPerMm + 12.5, kNear);
    EXPECT_NEAR(lines[1].x1, kMargin + 10 * kPointsPerMm, kNear);
    EXPECT_NEAR(lines[1].x2, kMargin + 160 * kPointsPerMm, kNear);
}

TEST_F(BandLayoutTest, GivesAPictureItsPlaceWhetherItIsThereOrNot) {
    Open("band A\nline 6\nfield F\npicture P from 100 to 150 top 2 height 20 align right\nband B\nline 6\nfield F\n");
    engine_.band("A").field("P").LoadPicture(test::ProductFile("reportlogo.bmp"));
    Print("A", "F", "with");
    Print("B", "F", "below");
    const Drawing& page = Show().pages[0];
    ASSERT_EQ(page.pictures.size(), 1u);
    EXPECT_NEAR(page.pictures[0].top, kMargin + 2 * kPointsPerMm, kNear);
    EXPECT_NEAR(page.pictures[0].width, 50 * kPointsPerMm, kNear);
    EXPECT_EQ(page.pictures[0].alignment, Alignment::kRight);
    EXPECT_EQ(page.pictures[0].content->substr(0, 2), "BM");
    EXPECT_NEAR(Find("below").baseline - Find("with").baseline, 22 * kPointsPerMm, kNear);
}

TEST_F(BandLayoutTest, GivesALineWithoutTextsNoHeightWhereItCollapses) {
    const std::string rest = "field F\nline 10\nfield G\n";
    Open("band A\nline 7 collapse\n" + rest);
    Print("A", "G", "collapsed");
    Show();
    const double collapsed = Find("collapsed").baseline;
    Open("band A\nline 7\n" + rest);
    Print("A", "G", "kept");
    Show();
    EXPECT_NEAR(Find("kept").baseline, collapsed + 7 * kPointsPerMm, kNear);
    Open("band A\nline 7 collapse\n" + rest);
    engine_.band("A").field("F").SetText("filled");
    Print("A", "G", "below");
    Show();
    EXPECT_NEAR(Find("below").baseline, collapsed + 7 * kPointsPerMm, kNear);
}

}  // namespace
}  // namespace ledgix::zq
