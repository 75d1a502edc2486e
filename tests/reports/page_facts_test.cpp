#include "page_facts.h"

#include <gtest/gtest.h>

#include <string_view>

#include "font_widths.h"
#include "template_reader.h"

// The judges of the pages see what is wrong.
namespace ledgix::test {
namespace {

using Faults = std::vector<std::string>;

constexpr std::string_view kTemplate =
    "ledgix report 1\npage portrait\nmargins 20 20 20 20\nfooter\nbefore 5\nline 10\nlabel \"{page}\"\nband A\n";

zq::PrintedText Text(const std::string& content, double left, double baseline, double size = 10) {
    return {left, baseline, zq::TextWidth(content, size, false), size, false, zq::Alignment::kLeft, {}, content};
}

zq::PrintedBand Band(const std::string& name, const Faults& texts) {
    zq::PrintedBand band;
    band.name = name;
    for (const std::string& text : texts)
        band.cells.push_back({0, 0, 0, zq::Alignment::kLeft, text});
    return band;
}

// Two pages, a band and a footer on each.
class PageFacts : public testing::Test {
protected:
    PageFacts() {
        document.page_width = measures.page_width;
        document.page_height = measures.page_height;
        document.bands = {Band("One", {"alpha beta", "gamma"}), Band("Two", {"delta"})};
        document.pages.resize(2);
        document.pages[0].texts = {Text("alpha beta", 60, 100), Text("gamma", 160, 100)};
        document.pages[1].texts = {Text("delta", 60, 100)};
        for (zq::Drawing& page : document.pages)
            for (const char* part : {"left", "middle", "right"})
                page.texts.push_back(Text(part, 60 + 100.0 * double(page.texts.size()), 780, 8));
    }

    zq::PrintedText& text(std::size_t i) { return document.pages[0].texts[i]; }

    const zq::ReportTemplate measures = zq::ReadTemplate(kTemplate, runtime::Paper::kA4);
    zq::Document document;
};

TEST_F(PageFacts, FindNoFaultInASoundPage) {
    EXPECT_EQ(OutsideOf(document, measures), Faults());
    EXPECT_EQ(Collisions(document), Faults());
    EXPECT_EQ(Unreadable(document), Faults());
    EXPECT_EQ(PartedBands(document), Faults());
    EXPECT_EQ(TextOfPages(document), "alphabetagammadelta");
    EXPECT_EQ(TextOfBands(document), "alphabetagammadelta");
    EXPECT_EQ(FooterOf(document.pages[1]), (Faults{"left", "middle", "right"}));
}

TEST_F(PageFacts, FindATextBeyondAMargin) {
    text(1).left = document.page_width - measures.right - text(1).width + 1;
    EXPECT_EQ(OutsideOf(document, measures), Faults{"page 1: gamma"});
    text(1).left = measures.left - 1;
    EXPECT_EQ(OutsideOf(document, measures), Faults{"page 1: gamma"});
}

TEST_F(PageFacts, FindATextInTheFooter) {
    text(0).baseline = 765;
    EXPECT_EQ(OutsideOf(document, measures), Faults{"page 1: alpha beta"});
}

TEST_F(PageFacts, FindAPictureBeyondAMargin) {
    document.pages[1].pictures.push_back({60, 40, 10, 10, zq::Alignment::kLeft, nullptr});
    EXPECT_EQ(OutsideOf(document, measures), Faults{"page 2: a picture"});
}

TEST_F(PageFacts, FindTextsThatTouch) {
    text(1).left = text(0).left + text(0).width + 1;
    EXPECT_EQ(Collisions(document), Faults{"page 1: alpha beta and gamma"});
}

TEST_F(PageFacts, FindLinesThatOverlap) {
    text(1).left = text(0).left;
    text(1).baseline = text(0).baseline + 5;
    EXPECT_EQ(Collisions(document), Faults{"page 1: alpha beta and gamma"});
}

TEST_F(PageFacts, FindATextOverAPicture) {
    document.pages[0].pictures.push_back({170, 90, 10, 30, zq::Alignment::kLeft, nullptr});
    EXPECT_EQ(Collisions(document), Faults{"page 1: gamma and a picture"});
}

TEST_F(PageFacts, FindTooSmallAndPressedTexts) {
    text(0).size = 4.9;
    text(1).width *= 0.9;
    EXPECT_EQ(Unreadable(document).size(), 2U);
}

TEST_F(PageFacts, FindABandOnTwoPages) {
    document.bands[0].cells.push_back(document.bands[1].cells[0]);
    document.bands[1].cells.clear();
    EXPECT_EQ(PartedBands(document), Faults{"page 1: band One goes on"});
}

}  // namespace
}  // namespace ledgix::test
