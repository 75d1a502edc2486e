#pragma once

#include <string>
#include <string_view>
#include <vector>

// The help file: text topics, each found by its context number.
//
//   ; a comment                       lines that start with a semicolon are skipped
//   topic 31 Income                   begins a topic: context number from 1, title
//   within 30                         the topic that it belongs under; one that stands before it
//   = Heading
//   - an item of a list
//   Salary :: what the name means     a row of a list of names; blanks around the two colons
//   figure Total Assets               a row of a worked example: its name; what it is made of, by the names of other
//     = Family Home + Cash            figures; the same with their figures; and what comes out. A figure that is given
//     = 415,000 + 36,400              has the last one alone, one without names in it has no second line.
//     = 451,400
//   see 32 50                         other topics of interest, shown as links at the end
//   Any other line                    text; lines that follow each other are one paragraph, an empty line ends it
//
// The text is UTF-8. A line that starts with a blank continues the item, row or paragraph above it.
namespace ledgix::shell {

struct HelpBlock {
    enum class Kind { kParagraph, kHeading, kItem, kName, kFigure };
    Kind kind = Kind::kParagraph;
    std::string name;  // of kName and kFigure
    std::string text;  // of kFigure: "= Family Home + Cash = 415,000 + 36,400 = 451,400"
    bool operator==(const HelpBlock&) const = default;
};

struct HelpPage {
    int context = 0;
    std::string title;
    int within = 0;  // context number; 0: none
    std::vector<HelpBlock> blocks;
    std::vector<int> see;
};

// What stands behind each "=" of a figure; the last one is its value.
std::vector<std::string> FigureSteps(const HelpBlock& figure);

class HelpFile {
public:
    HelpFile() = default;
    // Error 5 with the number of the line that is no help: text before the first topic, a number that is none or is
    // given twice, a topic without a title or without text, a figure without a name or a value, a reference to a
    // topic that is not there.
    explicit HelpFile(std::string_view text);

    // In the order of the file.
    const std::vector<HelpPage>& pages() const { return pages_; }

    // The page of this number; of the first page when there is none. Null only for a file without topics.
    const HelpPage* Find(int context) const;

    // The pages that hold all words of a text, in any order and letters of any case: first those with all of them in
    // the title. All pages when the text has no words.
    std::vector<const HelpPage*> Search(std::string_view text) const;

private:
    std::vector<HelpPage> pages_;
};

// The words of a search text, in small letters.
std::vector<std::string> SearchWords(std::string_view text);

}  // namespace ledgix::shell
