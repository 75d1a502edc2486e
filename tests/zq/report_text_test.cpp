#include "report_text.h"

#include <gtest/gtest.h>

#include "report_fixture.h"

namespace ledgix::zq {
namespace {

class ReportTextTest : public test::ReportFixture {
protected:
    std::string Text() { return ToText(engine_.document()); }
};

TEST_F(ReportTextTest, LinesUpColumnsAtTheWidestTextOfTheDocument) {
    Open(
        "band Table\nline 5\nfield caption from 0 to 50\nfield before from 50 to 80 align right\n"
        "field after from 90 to 120 align right\n");
    Band& table = engine_.band("Table");
    table.field("before").SetText("1");
    Print("Table", "caption", "short");
    table.field("before").SetText("-$123,456,789,012.00");
    table.field("after").SetText("2");
    Print("Table", "caption", "a longer caption");
    EXPECT_EQ(Text(),
              "short                                1\n"
              "a longer caption  -$123,456,789,012.00  2\n");
}

TEST_F(ReportTextTest, SharesTheColumnsOfAGridAndShowsLabels) {
    Open(
        "band Table\nline 5\nfield caption from 0 to 50\nfield before from 50 to 80 align right\n"
        "band BeforeAfter grid Table\nline 5\nlabel \"Before\" from 50 to 80 align right\n");
    engine_.PrintBand("BeforeAfter");
    engine_.band("Table").field("before").SetText("15600");
    Print("Table", "caption", "Yearly Income");
    EXPECT_EQ(Text(),
              "               Before\n"
              "Yearly Income   15600\n");
}

TEST_F(ReportTextTest, CentresTextsInTheirColumns) {
    Open("band A\nline 5\nfield F from 0 to 20 align center\nfield G from 20 to 40\n");
    Print("A", "F", "wide one");
    engine_.band("A").field("G").SetText("x");
    Print("A", "F", "in");
    EXPECT_EQ(Text(), "wide one\n   in     x\n");
}

TEST_F(ReportTextTest, UnderlinesHeadingsAndSetsThemOff) {
    Open("band Heading heading\nbefore 3\nafter 2\nline 5\nfield caption\nband Row\nline 5\nfield F\n");
    Print("Heading", "caption", "First");
    Print("Row", "F", "row");
    Print("Heading", "caption", "Z\xC3\xBCrich");
    EXPECT_EQ(Text(), "First\n=====\nrow\n\nZ\xC3\xBCrich\n======\n");
}

TEST_F(ReportTextTest, HasABlankLineForABlankBandAndForSpaceBehindABand) {
    Open("band Header\nafter 3\nline 5\nfield F\nband Row\nline 5\nfield F\nband Blank\nheight 3\n");
    Print("Header", "F", "header");
    Print("Row", "F", "1");
    engine_.PrintBand("Blank");
    Print("Row", "F", "2");
    Print("Header", "F", "header");
    engine_.PrintBand("Blank");
    Print("Row", "F", "3");
    EXPECT_EQ(Text(), "header\n\n1\n\n2\nheader\n\n3\n");
}

TEST_F(ReportTextTest, LeavesOutCollapsedLinesAndPictures) {
    Open("band Header\nline 5 collapse\nfield Title\nline 5 collapse\nfield Profile\npicture reportlogo height 5\n");
    engine_.band("Header").field("reportlogo").LoadPicture("/nowhere/logo.bmp");
    Print("Header", "Profile", "Profile : Whitaker");
    EXPECT_EQ(Text(), "Profile : Whitaker\n");
}

TEST_F(ReportTextTest, KeepsTheLinesOfAMemo) {
    Open("band freetext\nline 5\nfield caption from 0 to 25\n");
    test::PrintMemo(engine_, "one two three four\r\n\r\nfive");
    EXPECT_EQ(Text(), "one two three\nfour\n\nfive\n");
}

TEST_F(ReportTextTest, CutsNothingAndCountsWideLettersTwice) {
    Open("band A\nline 5\nfield F from 0 to 20\nfield G from 20 to 40\n");
    engine_.band("A").field("G").SetText("x");
    Print("A", "F", "\xE6\x9D\xB1\xE4\xBA\xAC");
    Print("A", "F", std::string(200, 'W'));
    EXPECT_EQ(Text(), "\xE6\x9D\xB1\xE4\xBA\xAC" + std::string(198, ' ') + "x\n" + std::string(200, 'W') + "  x\n");
}

TEST_F(ReportTextTest, LetsNoControlCharacterReachTheTerminal) {
    Open("band A\nline 5\nfield F\n");
    Print("A", "F", "a\x1B[31mb");
    EXPECT_EQ(Text(), "a [31mb\n");
}

TEST_F(ReportTextTest, IsEmptyForNothing) {
    EXPECT_EQ(ToText(Document()), "");
}

}  // namespace
}  // namespace ledgix::zq
