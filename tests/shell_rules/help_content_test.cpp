#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>

#include "files.h"
#include "help_file.h"

// The program's own help file against the numbers that its windows ask for.
namespace ledgix::shell {
namespace {

std::string Source(const std::string& path) {
    return runtime::ReadFile(LEDGIX_SOURCE "/" + path);
}

const HelpFile& OwnHelp() {
    static const HelpFile file(Source("shell/help/ledgix.hlp"));
    return file;
}

bool HasTopic(int context) {
    return OwnHelp().Find(context)->context == context;
}

// All matches of the pattern's first group, with its second one.
std::vector<std::pair<std::string, std::string>> Matches(const std::string& text, const std::regex& pattern) {
    std::vector<std::pair<std::string, std::string>> found;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
        found.emplace_back((*match)[1].str(), match->size() > 2 ? (*match)[2].str() : std::string());
    return found;
}

// Name -> context number.
std::map<std::string, int> ContextNumbers() {
    std::map<std::string, int> numbers;
    for (const auto& [name, number] : Matches(Source("editors/help_topics.h"), std::regex("(kHelp\\w+) = (\\d+)")))
        numbers[name] = std::stoi(number);
    return numbers;
}

// The code of the windows.
std::vector<std::string> WindowSources() {
    std::vector<std::string> sources;
    for (const char* folder : {"editors", "shell", "controls", "reports/zqReports/preview"})
        for (const auto& entry : std::filesystem::directory_iterator(LEDGIX_SOURCE "/" + std::string(folder)))
            if (entry.path().extension() == ".cpp")
                sources.push_back(runtime::ReadFile(entry.path().string()));
    return sources;
}

TEST(HelpContent, HasATopicForEveryContextNumber) {
    const std::map<std::string, int> numbers = ContextNumbers();
    ASSERT_GE(numbers.size(), 18U);
    for (const auto& [name, number] : numbers)
        EXPECT_TRUE(HasTopic(number)) << name;
}

TEST(HelpContent, HasNoTopicWithoutAContextNumber) {
    const std::map<std::string, int> numbers = ContextNumbers();
    for (const HelpPage& page : OwnHelp().pages())
        EXPECT_TRUE(std::any_of(numbers.begin(), numbers.end(), [&page](const auto& number) {
            return number.second == page.context;
        })) << page.title;
}

TEST(HelpContent, IsAskedForByNameEverywhere) {
    const std::map<std::string, int> numbers = ContextNumbers();
    const std::regex names("\\b(kHelp\\w+)\\b");
    const std::regex bare_numbers("(ShowHelpTopic|OpenHelp)\\(([0-9]+)");
    std::size_t used = 0;
    for (const std::string& source : WindowSources()) {
        EXPECT_TRUE(Matches(source, bare_numbers).empty()) << Matches(source, bare_numbers).front().second;
        for (const auto& [name, nothing] : Matches(source, names)) {
            EXPECT_EQ(numbers.count(name), 1U) << name;
            ++used;
        }
    }
    EXPECT_GE(used, 10U);
}

TEST(HelpContent, LinksEveryTopicToAnother) {
    for (const HelpPage& page : OwnHelp().pages()) {
        EXPECT_FALSE(page.see.empty()) << page.title;
        for (const int context : page.see) {
            EXPECT_TRUE(HasTopic(context)) << page.title << " -> " << context;
            EXPECT_NE(context, page.context) << page.title;
        }
    }
}

TEST(HelpContent, CanBeReachedFromItsFirstTopic) {
    std::vector<int> reached{OwnHelp().pages().front().context};
    for (std::size_t i = 0; i < reached.size(); ++i)
        for (const int context : OwnHelp().Find(reached[i])->see)
            if (std::find(reached.begin(), reached.end(), context) == reached.end())
                reached.push_back(context);
    EXPECT_EQ(reached.size(), OwnHelp().pages().size());
}

TEST(HelpContent, HasShortLines) {
    std::istringstream lines(Source("shell/help/ledgix.hlp"));
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; }), 132) << line;
}

TEST(Guide, ShowsPicturesThatAreThere) {
    for (const std::string folder : {"", "docs/"}) {
        const std::string text = Source(folder + (folder.empty() ? "README.md" : "guide.md"));
        const auto pictures = Matches(text, std::regex("!\\[[^\\]]+\\]\\(([^)]+\\.png)\\)"));
        EXPECT_GE(pictures.size(), 2U);
        for (const auto& [picture, nothing] : pictures)
            EXPECT_TRUE(std::filesystem::exists(LEDGIX_SOURCE "/" + folder + picture)) << picture;
    }
}

}  // namespace
}  // namespace ledgix::shell
