#include "pdf_output.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <iterator>
#include <sstream>

#include "cases.h"
#include "error_of.h"
#include "pdf_library.h"
#include "process.h"
#include "report_fixture.h"
#include "runtime_error.h"

// The files are looked at by poppler's tools: pdfinfo, pdffonts, pdfimages and pdftotext.
namespace ledgix::zq {
namespace {

using nlohmann::json;
using runtime::Paper;

constexpr int kDeviceIo = static_cast<int>(runtime::ErrorNumber::kDeviceIo);
constexpr std::size_t kLargestFile = 100000;

// What a program prints about the file.
std::string Ask(const std::string& tool, const std::string& path, const std::string& behind = "") {
    return test::Output(tool + " '" + path + "' " + behind + " 2>&1");
}

// The texts occur in this order, each behind the one before; blanks count as one.
void ExpectInOrder(const std::string& output, const std::vector<std::string>& texts) {
    std::istringstream words(output);
    std::string flat;
    for (std::string word; words >> word;)
        flat += word + " ";
    std::size_t at = 0;
    for (const std::string& text : texts) {
        std::istringstream wanted(text);
        std::string flat_text;
        for (std::string word; wanted >> word;)
            flat_text += (flat_text.empty() ? "" : " ") + word;
        const std::size_t found = flat.find(flat_text, at);
        ASSERT_NE(found, flat.npos) << flat_text << " does not follow in\n" << flat.substr(at);
        at = found + flat_text.size();
    }
}

std::vector<std::string> BandTexts(const Document& document) {
    std::vector<std::string> texts;
    for (const PrintedBand& band : document.bands)
        for (const PrintedCell& cell : band.cells)
            if (!cell.text.empty())
                texts.push_back(cell.text);
    return texts;
}

// Two header lines, then a line for each font, which ends in: embedded, subset, with Unicode texts, object and number.
void ExpectEmbeddedFonts(const std::string& listing) {
    std::istringstream lines(listing);
    int fonts = -2;
    for (std::string line; std::getline(lines, line); ++fonts) {
        std::istringstream columns(line);
        const std::vector<std::string> words{std::istream_iterator<std::string>(columns), {}};
        if (fonts < 0)
            continue;
        ASSERT_GT(words.size(), 5u) << listing;
        EXPECT_EQ(words[words.size() - 5], "yes") << listing;
        EXPECT_EQ(words[words.size() - 3], "yes") << listing;
    }
    EXPECT_EQ(fonts, 2) << listing;
}

class PdfOutputTest : public test::ReportFixture {
protected:
    const Document& Run(const char* name, const json& bands) {
        EXPECT_TRUE(engine_.OpenTemplate(test::ProductFile(name))) << engine_.why();
        test::PrintCase(engine_, bands);
        return Show();
    }

    std::string Write() {
        WritePdf(engine_.document(), folder_.File("report.pdf"));
        return folder_.File("report.pdf");
    }
};

struct Report {
    const char* file;  // of reference cases
    const char* report_template;
    Paper paper;
    const char* page_size;
};

void PrintTo(const Report& report, std::ostream* out) {
    *out << report.file << " on " << report.page_size;
}

class PdfReportTest : public PdfOutputTest, public testing::WithParamInterface<Report> {
protected:
    test::ScopedRegion paper_{test::RegionWithPaper(GetParam().paper)};
};

TEST_P(PdfReportTest, HasItsPagesFontsAndTextsAndIsSmall) {
    const Document& document = Run(GetParam().report_template, test::LoadCases(GetParam().file)[0]["bands"]);
    const std::string path = Write();
    const std::string info = Ask("pdfinfo", path);
    EXPECT_NE(info.find("Page size:       " + std::string(GetParam().page_size)), info.npos) << info;
    EXPECT_NE(info.find("Pages:           " + std::to_string(document.pages.size()) + "\n"), info.npos) << info;
    EXPECT_NE(info.find("Title:           " + document.title + "\n"), info.npos) << info;
    ExpectEmbeddedFonts(Ask("pdffonts", path));
    ExpectInOrder(Ask("pdftotext -layout", path, "-"), BandTexts(document));
    ExpectInOrder(Ask("pdftotext -raw", path, "-"), BandTexts(document));
    EXPECT_LT(test::Content(path).size(), kLargestFile);
}

constexpr Report kReports[] = {
    {"profile_report.json", "profile.rdn", Paper::kA4, "595 x 842 pts (A4)"},
    {"profile_report.json", "profile.rdn", Paper::kLetter, "612 x 792 pts (letter)"},
    {"property_report.json", "profile.rdn", Paper::kA4, "595 x 842 pts (A4)"},
    {"property_report.json", "profile.rdn", Paper::kLetter, "612 x 792 pts (letter)"},
    {"outlook_report.json", "profile10.rdn", Paper::kA4, "842 x 595 pts (A4)"},
    {"outlook_report.json", "profile10.rdn", Paper::kLetter, "792 x 612 pts (letter)"},
};

INSTANTIATE_TEST_SUITE_P(All, PdfReportTest, testing::ValuesIn(kReports), [](const auto& tested) {
    return test::TestName(tested.index, std::string(tested.param.file) + " on " + tested.param.page_size);
});

TEST_F(PdfOutputTest, HoldsALongMemoOfSeveralPagesInOrder) {
    ASSERT_TRUE(engine_.OpenTemplate(test::ProductFile("profile.rdn")));
    std::string memo;
    for (int i = 0; memo.size() < 20000; ++i)
        memo += "Sentence " + std::to_string(i) + " weighs income and expenses.  ";
    test::PrintMemo(engine_, memo);
    const Document& document = Show();
    EXPECT_GT(document.pages.size(), 3u);
    const std::string path = Write();
    ExpectInOrder(Ask("pdftotext", path, "-"), BandTexts(document));
    ExpectInOrder(Ask("pdftotext -layout", path, "-"), BandTexts(document));
    EXPECT_LT(test::Content(path).size(), kLargestFile);
}

struct Word {
    double left = 0;
    double right = 0;
};

// Where pdftotext -bbox finds a word, in points.
Word FindWord(const std::string& path, const std::string& word) {
    const std::string boxes = Ask("pdftotext -bbox", path, "-");
    const std::size_t end = boxes.find("\">" + word + "</word>");
    if (end == boxes.npos) {
        ADD_FAILURE() << word << " is not in\n" << boxes;
        return {};
    }
    const std::string line = boxes.substr(boxes.rfind("<word", end), end);
    Word found;
    EXPECT_EQ(std::sscanf(line.c_str(), "<word xMin=\"%lf\" yMin=\"%*f\" xMax=\"%lf\"", &found.left, &found.right), 2);
    return found;
}

TEST_F(PdfOutputTest, DrawsTextsWhereTheLayoutHasThem) {
    Open(
        "band A\nline 6\nfield F from 0 to 60 align right\nfield G from 80 to 120 bold\nfield H from 130 to 150 align "
        "right\n");
    engine_.band("A").field("F").SetText("$11,700.00");
    engine_.band("A").field("G").SetText("expenses");
    Print("A", "H", "Total");
    Show();
    const std::string path = Write();
    for (const char* text : {"$11,700.00", "expenses", "Total"}) {
        const PrintedText drawn = Find(text);
        const Word word = FindWord(path, text);
        EXPECT_NEAR(word.left, drawn.left, 0.1) << text;
        EXPECT_NEAR(word.right, drawn.left + drawn.width, 0.1) << text;
    }
}

TEST_F(PdfOutputTest, SetsAnotherTypefaceToTheWidthsOfTheLayout) {
    Open("typeface \"Liberation Serif\"\nband A\nline 6\nfield F from 0 to 60 align right\nfield G from 80 to 120\n");
    engine_.band("A").field("F").SetText("$123,456.00");
    Print("A", "G", "expenses");
    Show();
    const std::string path = Write();
    EXPECT_NE(Ask("pdffonts", path).find("LiberationSerif"), std::string::npos);
    for (const char* text : {"$123,456.00", "expenses"}) {
        const PrintedText drawn = Find(text);
        const Word word = FindWord(path, text);
        EXPECT_NEAR(word.left, drawn.left, 0.2) << text;
        EXPECT_NEAR(word.right, drawn.left + drawn.width, 0.2) << text;
    }
}

TEST_F(PdfOutputTest, NarrowsATextThatIsTooWideAtItsLeastSize) {
    Open("band A\nline 6\nfield F from 0 to 15 size 12 least 8\n");
    Print("A", "F", "-123456789012.25");
    Show();
    const Word word = FindWord(Write(), "-123456789012.25");
    EXPECT_NEAR(word.right - word.left, 15 * test::kPointsPerMm, 0.2);
}

TEST_F(PdfOutputTest, KeepsTheLettersOfManyLanguages) {
    Open("band A\nline 6\nfield F\n");
    Print("A", "F",
          "Z\xC3\xBCrich \xC5\x81\xC3\xB3\xC4\x91\xC5\xBA \xE2\x82\xAC"
          "5 O'Brien & Co <x>");
    Show();
    ExpectInOrder(Ask("pdftotext", Write(), "-"), {"Z\xC3\xBCrich \xC5\x81\xC3\xB3\xC4\x91\xC5\xBA \xE2\x82\xAC"
                                                   "5 O'Brien & Co <x>"});
}

TEST_F(PdfOutputTest, ShowsThePictureAndLeavesABrokenOneOut) {
    const std::string bands = "band A\nline 6\nfield F\npicture P from 0 to 40 height 20\n";
    Open(bands);
    engine_.band("A").field("P").LoadPicture(test::ProductFile("reportlogo.bmp"));
    engine_.PrintBand("A");
    Show();
    EXPECT_NE(Ask("pdfimages -list", Write()).find("image"), std::string::npos);
    Open(bands);
    engine_.band("A").field("P").LoadPicture(folder_.Write("broken.bmp", "BM and no more"));
    Print("A", "F", "still here");
    Show();
    const std::string path = Write();
    EXPECT_EQ(Ask("pdfimages -list", path).find("image"), std::string::npos);
    ExpectInOrder(Ask("pdftotext", path, "-"), {"still here"});
}

TEST_F(PdfOutputTest, MakesAPageForAReportWithoutBands) {
    Open("band A\n");
    Show();
    EXPECT_NE(Ask("pdfinfo", Write()).find("Pages:           1\n"), std::string::npos);
}

TEST_F(PdfOutputTest, ReplacesAnOlderFileAndLeavesNothingBeside) {
    Open("band A\n");
    Show();
    folder_.Write("report.pdf", "old");
    Write();
    EXPECT_TRUE(test::Content(folder_.File("report.pdf")).starts_with("%PDF-"));
    EXPECT_EQ(folder_.List(), "report.pdf test.rdn");
}

TEST_F(PdfOutputTest, LeavesNoHalfFileWhenItFails) {
    Open("band A\n");
    Show();
    EXPECT_EQ(test::ErrorOf([&] { WritePdf(engine_.document(), folder_.File("none/report.pdf")); }), kDeviceIo);
    const std::string occupied = folder_.MakeFolder("report.pdf");
    EXPECT_EQ(test::ErrorOf([&] { WritePdf(engine_.document(), occupied); }), kDeviceIo);
    EXPECT_EQ(folder_.List(), "report.pdf test.rdn");
}

TEST_F(PdfOutputTest, FindsNoRendererWhereTheLibraryIsAbsentOrIsNone) {
    EXPECT_EQ(LoadPdfRenderer(folder_.path()), nullptr);
    folder_.Write("libledgix_pdf.so", "no library");
    EXPECT_EQ(LoadPdfRenderer(folder_.path()), nullptr);
}

TEST_F(PdfOutputTest, RaisesError57WhereNoFolderHasTheLibrary) {
    const std::vector<std::string> folders{folder_.path()};
    EXPECT_EQ(test::ErrorOf([&] { FindPdfRenderer(folders); }), kDeviceIo);
}

}  // namespace
}  // namespace ledgix::zq
