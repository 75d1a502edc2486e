#include "zq_reports.h"

#include <gtest/gtest.h>

#include "error_of.h"
#include "report_csv.h"
#include "report_fixture.h"
#include "report_text.h"
#include "runtime_error.h"

namespace ledgix::zq {
namespace {

constexpr int kNotFound = static_cast<int>(runtime::ErrorNumber::kItemNotFound);

const std::string kBands =
    "band Header\nline 6\nfield Title default \"untitled\"\npicture reportlogo height 10\nlabel \"fixed\"\n"
    "band freetext\nline 5\nfield caption\n";

class ZqReportsTest : public test::ReportFixture {};

TEST_F(ZqReportsTest, OpensATemplateWhateverTheCaseOfItsName) {
    folder_.Write("Profile.RDN", test::kTemplateHead + kBands);
    EXPECT_TRUE(engine_.OpenTemplate(folder_.File("profile.rdn"))) << engine_.why();
    EXPECT_EQ(engine_.why(), "");
}

TEST_F(ZqReportsTest, TellsThatATemplateIsMissing) {
    EXPECT_FALSE(engine_.OpenTemplate(folder_.File("profile.rdn")));
    EXPECT_NE(engine_.why().find("profile.rdn"), std::string::npos);
    EXPECT_FALSE(engine_.OpenTemplate(folder_.path())) << "a folder";
    EXPECT_FALSE(engine_.OpenTemplate(folder_.path() + "/")) << "no name";
}

TEST_F(ZqReportsTest, TellsWhatIsWrongInWhichLineOfATemplate) {
    const std::string path = folder_.Write("bad.rdn", test::kTemplateHead + "band A\nheight x\n");
    EXPECT_FALSE(engine_.OpenTemplate(path));
    EXPECT_EQ(engine_.why(), path + ": line 5: 'x' is no number for the height");
}

TEST_F(ZqReportsTest, HasNothingOpenAfterAFailedOpen) {
    Open(kBands);
    engine_.PrintBand("Header");
    EXPECT_FALSE(engine_.OpenTemplate(folder_.File("none.rdn")));
    EXPECT_TRUE(engine_.document().bands.empty());
    EXPECT_EQ(test::ErrorOf([&] { engine_.band("Header"); }), kNotFound);
    EXPECT_EQ(test::ErrorOf([&] { engine_.PrintBand("Header"); }), kNotFound);
    EXPECT_EQ(test::ErrorOf([&] { engine_.Show(); }), static_cast<int>(runtime::ErrorNumber::kObjectNotSet));
}

TEST_F(ZqReportsTest, FindsBandsAndFieldsInAnyCase) {
    Open(kBands);
    engine_.band("HEADER").field("TITLE").SetText("x");
    EXPECT_EQ(engine_.band("header").field("title").text(), "x");
    EXPECT_EQ(engine_.band("header").name(), "Header");
    EXPECT_EQ(engine_.band("header").field("title").name(), "Title");
    engine_.PrintBand("hEADER");
    EXPECT_EQ(engine_.document().bands[0].name, "Header");
}

TEST_F(ZqReportsTest, RaisesError3265ForUnknownNames) {
    Open(kBands);
    EXPECT_EQ(test::ErrorOf([&] { engine_.band("Footer"); }), kNotFound);
    EXPECT_EQ(test::ErrorOf([&] { engine_.PrintBand("Footer"); }), kNotFound);
    EXPECT_EQ(test::ErrorOf([&] { engine_.band("Header").field("caption"); }), kNotFound);
    try {
        engine_.band("Header").field("caption");
    } catch (const runtime::RuntimeError& error) {
        EXPECT_EQ(error.source(), runtime::kProgramSource);
        EXPECT_EQ(error.description(), "The report template has no field 'Header.caption'.");
    }
}

TEST_F(ZqReportsTest, PrintsABandWithTheTextsOfTheMoment) {
    Open(kBands);
    engine_.PrintBand("Header");
    engine_.band("Header").field("Title").SetText("later");
    engine_.PrintBand("Header");
    engine_.PrintBand("Header");
    const std::vector<PrintedBand>& bands = engine_.document().bands;
    ASSERT_EQ(bands.size(), 3u);
    EXPECT_EQ(bands[0].fields[0].text, "untitled");
    EXPECT_EQ(bands[1].fields[0].text, "later");
    EXPECT_EQ(bands[2].fields[0].text, "later") << "texts last";
}

TEST_F(ZqReportsTest, ListsFieldsAndPicturesInTemplateOrderWithoutLabels) {
    Open(kBands);
    engine_.PrintBand("Header");
    const std::vector<PrintedField>& fields = engine_.document().bands[0].fields;
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields[0].name, "Title");
    EXPECT_FALSE(fields[0].is_picture);
    EXPECT_EQ(fields[1].name, "reportlogo");
    EXPECT_TRUE(fields[1].is_picture);
}

TEST_F(ZqReportsTest, StartsAnewWithEveryOpenedTemplate) {
    Open(kBands);
    Print("Header", "Title", "first run");
    Show();
    Open(kBands);
    EXPECT_TRUE(engine_.document().bands.empty());
    EXPECT_TRUE(engine_.document().pages.empty());
    EXPECT_EQ(engine_.band("Header").field("Title").text(), "untitled");
    EXPECT_EQ(engine_.band("freetext").field("caption").text(), "");
}

TEST_F(ZqReportsTest, TakesThePaperOfTheRegionThatHoldsWhenATemplateIsOpened) {
    Open(kBands);
    EXPECT_NEAR(Show().page_height, 841.89, 0.01);
    const test::ScopedRegion letter(test::RegionWithPaper(runtime::Paper::kLetter));
    Open(kBands);
    EXPECT_EQ(Show().page_height, 792);
}

TEST_F(ZqReportsTest, LoadsAPictureWhateverTheCaseOfItsName) {
    Open(kBands);
    folder_.Write("Logo.BMP", "BM...");
    Field& logo = engine_.band("Header").field("reportlogo");
    logo.LoadPicture(folder_.File("logo.bmp"));
    EXPECT_EQ(logo.text(), folder_.File("logo.bmp"));
    engine_.PrintBand("Header");
    ASSERT_EQ(Show().pages[0].pictures.size(), 1u);
    EXPECT_EQ(*engine_.document().pages[0].pictures[0].content, "BM...");
}

TEST_F(ZqReportsTest, LeavesThePlaceOfAMissingPictureEmpty) {
    Open(kBands);
    engine_.band("Header").field("reportlogo").LoadPicture(folder_.File("none.bmp"));
    engine_.PrintBand("Header");
    EXPECT_EQ(Show().bands[0].fields[1].text, folder_.File("none.bmp"));
    EXPECT_TRUE(engine_.document().pages[0].pictures.empty());
}

TEST_F(ZqReportsTest, ForgetsAPictureWhenTheNextOneIsMissing) {
    Open(kBands);
    Field& logo = engine_.band("Header").field("reportlogo");
    logo.LoadPicture(folder_.Write("logo.bmp", "BM..."));
    logo.LoadPicture(folder_.File("none.bmp"));
    engine_.PrintBand("Header");
    EXPECT_TRUE(Show().pages[0].pictures.empty());
}

TEST_F(ZqReportsTest, ForgetsAPictureWhoseFieldGetsAText) {
    Open(kBands);
    Field& logo = engine_.band("Header").field("reportlogo");
    logo.LoadPicture(folder_.Write("logo.bmp", "BM..."));
    logo.SetText("");
    engine_.PrintBand("Header");
    EXPECT_TRUE(Show().pages[0].pictures.empty());
}

TEST_F(ZqReportsTest, DividesATextBehindWhatFitsTheField) {
    Open("band freetext\nline 5\nfield caption from 0 to 25\n");
    const Field& caption = engine_.band("freetext").field("caption");
    const zqReports::Fit fit = engine_.FitText(caption, "one two three four");
    EXPECT_EQ(fit.part, "one two three ");
    EXPECT_EQ(fit.rest, "four");
    EXPECT_EQ(engine_.FitText(caption, "").part, "");
    EXPECT_EQ(engine_.FitText(caption, "").rest, "");
}

TEST_F(ZqReportsTest, DrawsTheLinesOfAMemoAtFullSizeWithinTheMargins) {
    Open(kBands);
    std::string memo;
    for (int i = 0; memo.size() < 20000; ++i)
        memo += "Sentence " + std::to_string(i) + " weighs income and expenses" + std::string(i % 7 ? ".  " : ".\r\n");
    test::PrintMemo(engine_, memo);
    std::string joined;
    for (const PrintedBand& band : Show().bands)
        joined += band.fields[0].text;
    EXPECT_EQ(joined, memo);
    for (const Drawing& page : engine_.document().pages)
        for (const PrintedText& text : page.texts) {
            EXPECT_NEAR(text.size, 10, 1e-6);
            EXPECT_LE(text.width, 170 * test::kPointsPerMm + 1e-6);
        }
}

class PreviewRecorder : public Preview {
public:
    PreviewRecorder() { InstallPreview(this); }
    ~PreviewRecorder() override { InstallPreview(nullptr); }
    PreviewRecorder(const PreviewRecorder&) = delete;
    PreviewRecorder& operator=(const PreviewRecorder&) = delete;

    // What the windows say and tell; they may outlive the recorder.
    struct Screen {
        int destroyed = 0;
        bool open = true;
    };

    struct Window : PreviewWindow {
        explicit Window(std::shared_ptr<Screen> screen) : screen_(std::move(screen)) {}
        ~Window() override { ++screen_->destroyed; }
        bool IsOpen() const override { return screen_->open; }

    private:
        std::shared_ptr<Screen> screen_;
    };

    std::unique_ptr<PreviewWindow> Show(const Document& document, std::function<void()> print_button) override {
        pages.push_back(document.pages.size());
        destinations.push_back(kToPreview);
        press_print = std::move(print_button);
        return std::make_unique<Window>(screen);
    }
    void Print(const Document& document) override {
        pages.push_back(document.pages.size());
        destinations.push_back(kToPrinter);
    }

    std::vector<std::size_t> pages;
    std::vector<int> destinations;
    std::function<void()> press_print;
    std::shared_ptr<Screen> screen = std::make_shared<Screen>();
};

TEST_F(ZqReportsTest, HandsTheFinishedReportToThePreview) {
    PreviewRecorder preview;
    Open(kBands);
    engine_.PrintBand("Header");
    engine_.Show();
    engine_.SetDestination(kToPrinter);
    engine_.Show();
    EXPECT_EQ(preview.pages, (std::vector<std::size_t>{1, 1}));
    EXPECT_EQ(preview.destinations, (std::vector<int>{0, 2}));
}

TEST_F(ZqReportsTest, KeepsTheDestinationForTheNextTemplate) {
    PreviewRecorder preview;
    engine_.SetDestination(kToPrinter);
    Open(kBands);
    engine_.Show();
    EXPECT_EQ(preview.destinations, std::vector<int>{2});
}

TEST_F(ZqReportsTest, KnowsWhetherItsPreviewIsOpen) {
    PreviewRecorder preview;
    EXPECT_FALSE(engine_.PreviewOpen());
    Open(kBands);
    engine_.Show();
    EXPECT_TRUE(engine_.PreviewOpen());
    preview.screen->open = false;
    EXPECT_FALSE(engine_.PreviewOpen());
}

TEST_F(ZqReportsTest, ClosesItsPreviewAtItsEnd) {
    PreviewRecorder preview;
    {
        zqReports engine;
        ASSERT_TRUE(engine.OpenTemplate(folder_.Write("any.rdn", test::kTemplateHead + kBands)));
        engine.Show();
        EXPECT_EQ(preview.screen->destroyed, 0);
    }
    EXPECT_EQ(preview.screen->destroyed, 1);
}

TEST_F(ZqReportsTest, RaisesTheEventOfThePrintButton) {
    PreviewRecorder preview;
    int pressed = 0;
    engine_.PrintToPrinterButton = [&] { ++pressed; };
    Open(kBands);
    engine_.Show();
    preview.press_print();
    EXPECT_EQ(pressed, 1);
}

TEST_F(ZqReportsTest, RefusesUnknownDestinations) {
    for (const int destination : {-1, 1, 3})
        EXPECT_EQ(test::ErrorOf([&] { engine_.SetDestination(destination); }),
                  static_cast<int>(runtime::ErrorNumber::kInvalidArgument));
}

TEST_F(ZqReportsTest, GivesTheSameDocumentWhenTheReportRunsAgain) {
    const auto run = [&] {
        Open(kBands);
        Print("Header", "Title", "same");
        test::PrintMemo(engine_, "a memo that is printed twice");
        Show();
        return PageTexts(0);
    };
    const std::string first = run();
    EXPECT_EQ(first, "same|fixed|a memo that is printed twice");
    EXPECT_EQ(run(), first);
}

TEST_F(ZqReportsTest, GivesTheChartAwayWithTheDocument) {
    PreviewRecorder preview;
    Open(kBands);
    engine_.SetChart({"Outlook", "Year", {"0"}, "Value", "Each year", {{"Rent", ChartSeries::Kind::kLine, {5}}}});
    engine_.Show();
    ASSERT_TRUE(engine_.document().chart);
    EXPECT_EQ(engine_.document().chart->title, "Outlook");
    EXPECT_EQ(engine_.document().chart->series.at(0).values, std::vector<double>{5});
    Open(kBands);
    EXPECT_FALSE(engine_.document().chart);
}

TEST_F(ZqReportsTest, PrintsTheSameWithAChart) {
    const auto run = [&](bool with_chart) {
        Open(kBands);
        Print("Header", "Title", "same");
        if (with_chart)
            engine_.SetChart(
                {"Outlook", "Year", {"0"}, "Value", "Each year", {{"Rent", ChartSeries::Kind::kLine, {5}}}});
        const Document document = Show();
        return std::pair(ToCsv(document) + ToText(document), PageTexts(0));
    };
    EXPECT_EQ(run(true), run(false));
}

}  // namespace
}  // namespace ledgix::zq
