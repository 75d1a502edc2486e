#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli_run.h"
#include "process.h"
#include "temporary_folder.h"

namespace ledgix {
namespace {

constexpr std::uintmax_t kLargestPdf = 100 * 1000;

struct SampleReport {
    std::string kind;
    std::vector<std::string> choice;
};

// One report of the sample household as the installed program writes it, with poppler's tools as judges.
class SamplePdf : public testing::TestWithParam<SampleReport> {
protected:
    std::string Command(const std::string& format) const {
        std::string command = "'" LEDGIX_CLI "' --database '" LEDGIX_SOURCE "/samples/household-2000.mdb' report " +
                              GetParam().kind + " --format " + format;
        for (const std::string& word : GetParam().choice)
            command += " " + word;
        return command;
    }

    void SetUp() override { ASSERT_EQ(test::ExitStatus(Command("pdf") + " --output '" + file + "'"), cli::kDone); }

    test::TemporaryFolder folder;
    std::string file = folder.File("report.pdf");
};

// Finds every word of a text behind `at`, which moves along.
bool FindWords(const std::string& page_text, const std::string& text, std::size_t& at) {
    std::istringstream words(text);
    for (std::string word; words >> word; at += word.size()) {
        at = page_text.find(word, at);
        if (at == std::string::npos)
            return false;
    }
    return true;
}

TEST_P(SamplePdf, HoldsTheTextOfEveryBandInOrder) {
    const auto report = nlohmann::ordered_json::parse(test::Output(Command("json")));
    const std::string page_text = test::Output("pdftotext -raw '" + file + "' -");
    std::size_t at = 0;
    for (const auto& band : report["bands"])
        for (const auto& [name, text] : band["fields"].items()) {
            const std::string words = name == "reportlogo" ? "" : text.get<std::string>();
            ASSERT_TRUE(FindWords(page_text, words, at)) << band.dump();
        }
    EXPECT_GT(at, 0U);
}

TEST_P(SamplePdf, EmbedsItsFonts) {
    std::istringstream lines(test::Output("pdffonts '" + file + "'"));
    std::string line;
    std::getline(lines, line);
    const std::size_t embedded_at = line.find("emb");
    std::getline(lines, line);
    int fonts = 0;
    for (; std::getline(lines, line); ++fonts)
        EXPECT_EQ(line.substr(embedded_at, 3), "yes") << line;
    EXPECT_GT(fonts, 0);
}

TEST_P(SamplePdf, IsSmall) {
    EXPECT_LT(std::filesystem::file_size(file), kLargestPdf);
}

TEST_P(SamplePdf, GoesToStandardOutputWithoutAFile) {
    EXPECT_EQ(test::Output(Command("pdf")).substr(0, 5), "%PDF-");
}

INSTANTIATE_TEST_SUITE_P(Report, SamplePdf,
                         testing::Values(SampleReport{"profile", {"--profile", "1"}},
                                         SampleReport{"analysis", {"--profile", "1", "--property", "1"}},
                                         SampleReport{"outlook", {"--profile", "1", "--property", "1"}}),
                         [](const auto& sample) { return sample.param.kind; });

}  // namespace
}  // namespace ledgix
