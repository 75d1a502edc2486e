#include "template_reader.h"

#include <gtest/gtest.h>

#include "cases.h"
#include "report_fixture.h"
#include "runtime_error.h"

namespace ledgix::zq {
namespace {

using test::kPointsPerMm;
using test::kTemplateHead;

ReportTemplate Read(const std::string& bands, runtime::Paper paper = runtime::Paper::kA4) {
    return ReadTemplate(kTemplateHead + bands, paper);
}

// What a template is refused for; empty when it is not.
std::string Refusal(const std::string& text) {
    try {
        ReadTemplate(text, runtime::Paper::kA4);
        return {};
    } catch (const runtime::RuntimeError& error) {
        EXPECT_TRUE(error.Is(runtime::ErrorNumber::kInvalidArgument));
        return error.description();
    }
}

TEST(TemplateReader, KnowsThePapers) {
    const ReportTemplate a4 = Read("band A");
    EXPECT_NEAR(a4.page_width, 595.28, 0.01);
    EXPECT_NEAR(a4.page_height, 841.89, 0.01);
    const ReportTemplate letter = Read("band A", runtime::Paper::kLetter);
    EXPECT_EQ(letter.page_width, 612);
    EXPECT_EQ(letter.page_height, 792);
}

TEST(TemplateReader, TurnsThePaperForLandscape) {
    const ReportTemplate report =
        ReadTemplate("ledgix report 1\npage landscape\nmargins 10 15 20 25\nband A\n", runtime::Paper::kLetter);
    EXPECT_EQ(report.page_width, 792);
    EXPECT_EQ(report.page_height, 612);
    EXPECT_DOUBLE_EQ(report.left, 10 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(report.right, 15 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(report.top, 20 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(report.bottom, 25 * kPointsPerMm);
}

TEST(TemplateReader, CountsPlacesFromTheLeftFromTheRightAndInPercent) {
    const ReportTemplate report = Read("band A\nline 5\nfield F from 10 to -20\nfield G from 25% to 100%\nfield H\n");
    const double width = report.page_width - 40 * kPointsPerMm;
    const std::vector<ItemTemplate>& items = report.bands[0].items;
    EXPECT_DOUBLE_EQ(items[0].left, 10 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(items[0].right, width - 20 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(items[1].left, width / 4);
    EXPECT_DOUBLE_EQ(items[1].right, width);
    EXPECT_EQ(items[2].left, 0);
    EXPECT_DOUBLE_EQ(items[2].right, width);
}

TEST(TemplateReader, ReadsWhatAFieldLooksLike) {
    const ReportTemplate report = Read(
        "colour loss #a32020\n"
        "band A\n"
        "line 5\n"
        "field Amount align right size 12.5 least 7 bold even stretch colour #0000ff negative loss default \"none\"\n");
    const ItemTemplate& item = report.bands[0].items[0];
    EXPECT_EQ(item.name, "Amount");
    EXPECT_EQ(item.text, "none");
    EXPECT_EQ(item.alignment, Alignment::kRight);
    EXPECT_EQ(item.size, 12.5);
    EXPECT_EQ(item.least_size, 7);
    EXPECT_TRUE(item.bold && item.even && item.stretches);
    EXPECT_EQ(item.colour, (Colour{0, 0, 255}));
    EXPECT_EQ(item.negative, (Colour{0xa3, 0x20, 0x20}));
}

TEST(TemplateReader, GivesTextsTheDefaultsThatHoldWhereTheyStand) {
    const ReportTemplate report = Read(
        "text 9 #112233\nband A\nline 5\nfield F\ntext 5 #000000\nfield G\nfield H size 11\nfield I size 11 wrap\n");
    const std::vector<ItemTemplate>& items = report.bands[0].items;
    EXPECT_EQ(items[0].size, 9);
    EXPECT_EQ(items[0].colour, (Colour{0x11, 0x22, 0x33}));
    EXPECT_EQ(items[0].least_size, 6);
    EXPECT_EQ(items[1].size, 5);
    EXPECT_EQ(items[1].least_size, 5);
    EXPECT_EQ(items[2].least_size, 6);
    EXPECT_EQ(items[3].least_size, 11) << "what wraps does not shrink unless it says so";
}

TEST(TemplateReader, ReadsBandsWithRulesFillsAndVariants) {
    const ReportTemplate report = Read(
        "band A heading run\n"
        "before 2\nafter 1\nheight 9\n"
        "line 5 collapse\n"
        "field F\n"
        "rule top\n"
        "rule bottom from 0 to 50% weight 1.5 colour #010203\n"
        "fill #eeeeee from 10 to 100%\n"
        "when f empty bold fill #dddddd rule bottom weight 2\n"
        "when F is \"x\" \"say \"\"y\"\"\" colour #0a0b0c\n"
        "band B keep grid A\n");
    const BandTemplate& band = report.bands[0];
    EXPECT_TRUE(band.is_heading && band.keeps_with_next && band.runs && band.lines[0].collapses);
    EXPECT_DOUBLE_EQ(band.before, 2 * kPointsPerMm);
    EXPECT_DOUBLE_EQ(band.height, 9 * kPointsPerMm);
    ASSERT_EQ(band.rules.size(), 2u);
    EXPECT_TRUE(band.rules[0].at_top);
    EXPECT_EQ(band.rules[1].weight, 1.5);
    EXPECT_DOUBLE_EQ(band.fill->left, 10 * kPointsPerMm);
    ASSERT_EQ(band.variants.size(), 2u);
    EXPECT_TRUE(band.variants[0].when_empty && band.variants[0].bold && band.variants[0].fill);
    EXPECT_EQ(band.variants[0].rules.size(), 1u);
    EXPECT_EQ(band.variants[1].texts, (std::vector<std::string>{"x", "say \"y\""}));
    EXPECT_EQ(report.bands[1].grid, "A");
    EXPECT_TRUE(report.bands[1].keeps_with_next && !report.bands[1].is_heading);
}

TEST(TemplateReader, PassesOverCommentsBlankLinesAndWindowsLineEnds) {
    const std::string text =
        "\xEF\xBB\xBF# made by hand\r\n\r\nledgix report 1\r\n  # page\r\npage portrait\r\nmargins 20 20 20 20\r\nband "
        "A\r\n";
    EXPECT_EQ(Refusal(text), "");
}

TEST(TemplateReader, AllowsThePlaceholdersThatItKnows) {
    EXPECT_EQ(
        Refusal(kTemplateHead + "title \"{A.F} of {date}\"\nfooter\nline 5\nlabel \"{program} {page}/{pages} {A.F}\"\n"
                                "band A\nline 5\nfield F\nlabel \"{left as it is}\"\n"),
        "");
}

struct Refused {
    const char* name;
    const char* bands;  // behind the three lines of kTemplateHead
    const char* reason;
};

void PrintTo(const Refused& refused, std::ostream* out) {
    *out << refused.name;
}

class RefusedTemplate : public testing::TestWithParam<Refused> {};

TEST_P(RefusedTemplate, NamesTheLine) {
    EXPECT_EQ(Refusal(kTemplateHead + GetParam().bands), GetParam().reason);
}

constexpr Refused kRefused[] = {
    {"unknown statement", "band A\nfrobnicate 3\n", "line 5: unknown word 'frobnicate'"},
    {"unknown option", "band A\nline 5\nfield F bold italic\n", "line 6: unknown word 'italic'"},
    {"unknown band option", "band A keep sticky\n", "line 4: unknown word 'sticky'"},
    {"unknown picture option", "band A\npicture P height 5 bold\n", "line 5: unknown word 'bold'"},
    {"unknown variant option", "band A\nline 5\nfield F\nwhen F empty large\n", "line 7: unknown word 'large'"},
    {"words left over", "band A\nheight 5 mm\n", "line 5: unknown word 'mm'"},
    {"a word for a number", "band A\nheight tall\n", "line 5: 'tall' is no number for the height"},
    {"a number with an exponent", "band A\nheight 1e1\n", "line 5: '1e1' is no number for the height"},
    {"a number with two points", "band A\nheight 1.2.3\n", "line 5: '1.2.3' is no number for the height"},
    {"a lone sign", "band A\nheight -\n", "line 5: '-' is no number for the height"},
    {"a negative height", "band A\nheight -1\n", "line 5: the height must be from 0 to 400"},
    {"a number far too long", "band A\nheight 1234567890123\n", "line 5: '1234567890123' is no number for the height"},
    {"a number missing", "band A\nline\n", "line 5: the line's height is missing"},
    {"a size too small", "band A\nline 5\nfield F size 1\n", "line 6: the size must be from 4 to 72"},
    {"a least size above the size", "band A\nline 5\nfield F size 8 least 9\n",
     "line 6: the least size must be from 4 to 8"},
    {"a weight too large", "band A\nrule top weight 11\n", "line 5: the weight must be from 0.1 to 10"},
    {"a rule without an edge", "band A\nrule middle\n", "line 5: a rule is at the 'top' or at the 'bottom'"},
    {"an unknown colour", "band A\nfill pink\n", "line 5: 'pink' is no colour"},
    {"a colour code too short", "band A\nfill #12345\n", "line 5: '#12345' is no colour"},
    {"a colour defined twice", "colour a #000000\ncolour a #ffffff\n", "line 5: 'a' is no new name for a colour"},
    {"an unknown alignment", "band A\nline 5\nfield F align middle\n",
     "line 6: 'middle' is neither 'left', 'center' nor 'right'"},
    {"a place outside of the page", "band A\nline 5\nfield F from 10 to 171\n",
     "line 6: the right place lies outside of the margins"},
    {"a place left of the page", "band A\nline 5\nfield F from -180 to 5\n",
     "line 6: the left place lies outside of the margins"},
    {"more than all percent", "band A\nline 5\nfield F from 0 to 101%\n",
     "line 6: the right place must be from 0 to 100"},
    {"places the wrong way round", "band A\nline 5\nfield F from 50 to 20\n",
     "line 6: the right place is not right of the left one"},
    {"a place without its end", "band A\nline 5\nfield F from 50\n", "line 6: 'to' is missing"},
    {"an open quotation", "band A\nline 5\nlabel \"Before\n", "line 6: the quotation is not closed"},
    {"a label without text", "band A\nline 5\nlabel Before\n",
     "line 6: the label's text in quotation marks is missing"},
    {"a field without a name", "band A\nline 5\nfield \"F\"\n", "line 6: the field's name is missing"},
    {"a field outside of a line", "band A\nfield F\n", "line 5: a text belongs into a line"},
    {"a field outside of a band", "field F\n", "line 4: 'field' belongs into a band"},
    {"two fields of one name", "band A\nline 5\nfield F\nfield f\n", "line 7: the band has two fields 'f'"},
    {"a picture named as a field", "band A\nline 5\nfield F\npicture F height 5\n",
     "line 7: the band has two fields 'F'"},
    {"a picture without a height", "band A\npicture P\n", "line 5: a picture needs a height"},
    {"a label with a default", "band A\nline 5\nlabel \"x\" default \"y\"\n", "line 6: unknown word 'default'"},
    {"two bands of one name", "band A\nband a\n", "line 5: there are two bands 'a'"},
    {"a grid of no band", "band A grid B\n", "line 4: there is no band 'B'"},
    {"a variant of no field", "band A\nline 5\nlabel \"x\"\nwhen F empty bold\n", "line 7: the band has no field 'F'"},
    {"a variant without a condition", "band A\nline 5\nfield F\nwhen F full bold\n",
     "line 7: a field can be 'empty', or 'is' one of some texts"},
    {"a field in the footer", "footer\nline 5\nfield F\nband A\n", "line 6: a footer has labels only"},
    {"two footers", "footer\nfooter\nband A\n", "line 5: there are two footers"},
    {"two pages", "page portrait\n", "line 4: the page is described twice"},
    {"margins twice", "margins 5 5 5 5\n", "line 4: the margins are given twice"},
    {"an unknown placeholder", "footer\nline 5\nlabel \"{A.G}\"\nband A\nline 5\nfield F\n",
     "line 6: nothing is known as '{A.G}'"},
    {"a page number in the title", "title \"{page}\"\nband A\n", "line 4: nothing is known as '{page}'"},
    {"no band", "typeface \"Arial\"\n", "line 5: the template has no bands"},
};

INSTANTIATE_TEST_SUITE_P(All, RefusedTemplate, testing::ValuesIn(kRefused),
                         [](const auto& tested) { return test::TestName(tested.index, tested.param.name); });

TEST(TemplateReader, RefusesATextThatIsNoTemplate) {
    EXPECT_EQ(Refusal(""), "line 1: a report template begins with 'ledgix report 1'");
    EXPECT_EQ(Refusal("\n\nledgix report 2\n"), "line 3: a report template begins with 'ledgix report 1'");
    EXPECT_EQ(Refusal("BM6\x01"), "line 1: a report template begins with 'ledgix report 1'");
}

TEST(TemplateReader, RefusesMarginsThatLeaveNoRoom) {
    EXPECT_EQ(Refusal("ledgix report 1\nmargins 5 5 5 5\n"), "line 2: the margins follow the page");
    EXPECT_EQ(Refusal("ledgix report 1\npage portrait\nmargins 100 100 5 5\n"),
              "line 3: the margins leave no room on the page");
    EXPECT_EQ(Refusal("ledgix report 1\npage sideways\n"), "line 2: a page is 'portrait' or 'landscape'");
}

TEST(TemplateReader, WantsThePageBeforeTheFirstBand) {
    EXPECT_EQ(Refusal("ledgix report 1\nband A\n"), "line 2: page and margins come before the first band");
    EXPECT_EQ(Refusal("ledgix report 1\nfooter\n"), "line 2: page and margins come before the footer");
}

TEST(TemplateReader, SurvivesEveryTruncationOfAProductTemplate) {
    for (const char* name : {"profile.rdn", "profile10.rdn"}) {
        const std::string whole = test::Content(test::ProductFile(name));
        ASSERT_FALSE(whole.empty());
        for (std::size_t size = 0; size < whole.size(); ++size)
            Refusal(whole.substr(0, size));
        EXPECT_EQ(Refusal(whole), "");
    }
}

}  // namespace
}  // namespace ledgix::zq
