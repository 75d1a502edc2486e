#include "help_file.h"

#include <gtest/gtest.h>

#include "runtime_error.h"

namespace ledgix::shell {

void PrintTo(const HelpBlock& block, std::ostream* out) {
    *out << static_cast<int>(block.kind) << " \"" << block.name << "\" \"" << block.text << "\"";
}

namespace {

using Kind = HelpBlock::Kind;
using Blocks = std::vector<HelpBlock>;

const char* const kThreeTopics =
    "topic 1 Contents\n"
    "Welcome to rent and income.\n"
    "see 31 50\n"
    "topic 31 Income\n"
    "within 1\n"
    "Salary :: what you earn\n"
    "topic 50 Reports\n"
    "Reports show the income of a year.\n";

std::vector<int> Numbers(const std::vector<const HelpPage*>& pages) {
    std::vector<int> numbers;
    for (const HelpPage* page : pages)
        numbers.push_back(page->context);
    return numbers;
}

// The description of the error that a text raises, empty when it raises none.
std::string Refusal(std::string_view text) {
    try {
        const HelpFile file(text);
        return {};
    } catch (const runtime::RuntimeError& error) {
        EXPECT_TRUE(error.Is(runtime::ErrorNumber::kInvalidArgument));
        return error.description();
    }
}

Blocks BlocksOf(const std::string& lines) {
    return HelpFile("topic 1 Title\n" + lines).pages().at(0).blocks;
}

TEST(HelpFile, HasNoTopicsWhenItIsEmpty) {
    EXPECT_TRUE(HelpFile().pages().empty());
    EXPECT_TRUE(HelpFile("").pages().empty());
    EXPECT_TRUE(HelpFile("\n; only a comment\n").pages().empty());
    EXPECT_EQ(HelpFile().Find(1), nullptr);
}

TEST(HelpFile, KeepsTopicsInTheirOrder) {
    const HelpFile file(kThreeTopics);
    ASSERT_EQ(file.pages().size(), 3U);
    EXPECT_EQ(file.pages()[1].context, 31);
    EXPECT_EQ(file.pages()[1].title, "Income");
    EXPECT_EQ(file.pages()[1].within, 1);
    EXPECT_EQ(file.pages()[2].within, 0);
    EXPECT_EQ(file.pages()[0].see, (std::vector<int>{31, 50}));
}

TEST(HelpFile, JoinsLinesToParagraphs) {
    EXPECT_EQ(BlocksOf("one\ntwo\n\nthree\n"),
              (Blocks{{Kind::kParagraph, "", "one two"}, {Kind::kParagraph, "", "three"}}));
}

TEST(HelpFile, TellsHeadingsItemsAndNames) {
    EXPECT_EQ(BlocksOf("= Keys\n- Enter\n- Delete\nRent :: a week's rent\n"),
              (Blocks{{Kind::kHeading, "", "Keys"},
                      {Kind::kItem, "", "Enter"},
                      {Kind::kItem, "", "Delete"},
                      {Kind::kName, "Rent", "a week's rent"}}));
}

TEST(HelpFile, ContinuesABlockInALineThatStartsWithABlank) {
    EXPECT_EQ(BlocksOf("- Enter\n  opens\nRent :: a\n  year\n"),
              (Blocks{{Kind::kItem, "", "Enter opens"}, {Kind::kName, "Rent", "a year"}}));
}

TEST(HelpFile, BeginsAParagraphBehindAHeadingOrAnItem) {
    EXPECT_EQ(BlocksOf("= Keys\ntext\n"), (Blocks{{Kind::kHeading, "", "Keys"}, {Kind::kParagraph, "", "text"}}));
    EXPECT_EQ(BlocksOf("- item\ntext\n"), (Blocks{{Kind::kItem, "", "item"}, {Kind::kParagraph, "", "text"}}));
}

TEST(HelpFile, ReadsTheFiguresOfAnExample) {
    EXPECT_EQ(
        BlocksOf(
            "figure Rent = 18,720\nfigure Cash left\n  = Rent\n    - Rates\n  = 18,720 - 1,450\n  = 17,270\ntext\n"),
        (Blocks{{Kind::kFigure, "Rent", "= 18,720"},
                {Kind::kFigure, "Cash left", "= Rent - Rates = 18,720 - 1,450 = 17,270"},
                {Kind::kParagraph, "", "text"}}));
}

TEST(HelpFile, TakesTheStepsOfAFigureApart) {
    EXPECT_EQ(FigureSteps({Kind::kFigure, "Rent", "= 18,720"}), (std::vector<std::string>{"18,720"}));
    EXPECT_EQ(FigureSteps({Kind::kFigure, "Cash left", "= Rent - Rates = 18,720 - 1,450 = 17,270"}),
              (std::vector<std::string>{"Rent - Rates", "18,720 - 1,450", "17,270"}));
}

TEST(HelpFile, SkipsCommentsWithoutEndingAParagraph) {
    EXPECT_EQ(BlocksOf("one\n; not shown\ntwo\n"), (Blocks{{Kind::kParagraph, "", "one two"}}));
}

TEST(HelpFile, ReadsFilesOfEverySystem) {
    const HelpFile file("\xEF\xBB\xBFtopic 1 Contents\r\none\r\ntwo\r\n\r\nthree");
    ASSERT_EQ(file.pages().size(), 1U);
    EXPECT_EQ(file.pages()[0].title, "Contents");
    EXPECT_EQ(file.pages()[0].blocks, (Blocks{{Kind::kParagraph, "", "one two"}, {Kind::kParagraph, "", "three"}}));
}

TEST(HelpFile, RefusesWhatIsNoHelpAndNamesTheLine) {
    EXPECT_EQ(Refusal("text"), "Help file, line 1: text before the first topic");
    EXPECT_EQ(Refusal("; comment\ntopic Income\ntext"), "Help file, line 2: a topic number is missing");
    EXPECT_EQ(Refusal("topic 0 Income\ntext"), "Help file, line 1: a topic number is missing");
    EXPECT_EQ(Refusal("topic 3x Income\ntext"), "Help file, line 1: a topic number is missing");
    EXPECT_EQ(Refusal("topic 99999999999 Income\ntext"), "Help file, line 1: a topic number is missing");
    EXPECT_EQ(Refusal("topic 3\ntext"), "Help file, line 1: a topic without a title");
    EXPECT_EQ(Refusal("topic 3 A\ntext\ntopic 3 B\ntext"), "Help file, line 3: a topic number that is given twice");
    EXPECT_EQ(Refusal("topic 3 A\n\ntopic 4 B\ntext"), "Help file, line 1: a topic without text");
    EXPECT_EQ(Refusal("topic 3 A\ntext\ntopic 4 B\n"), "Help file, line 3: a topic without text");
    EXPECT_EQ(Refusal("topic 3 A\nfigure Rent\n\ntext"), "Help file, line 2: a figure without a name or a value");
    EXPECT_EQ(Refusal("topic 3 A\ntext\nfigure = 5"), "Help file, line 3: a figure without a name or a value");
    EXPECT_EQ(Refusal("topic 3 A\nfigure Rent\ntopic 4 B\ntext"),
              "Help file, line 2: a figure without a name or a value");
}

TEST(HelpFile, RefusesReferencesToTopicsThatAreNotThere) {
    EXPECT_EQ(Refusal("topic 3 A\ntext\nsee 3\nsee 4"), "Help file, line 4: a reference to a topic that is not there");
    EXPECT_EQ(Refusal("topic 3 A\ntext\nsee x"), "Help file, line 3: a topic number is missing");
    EXPECT_EQ(Refusal("topic 3 A\nwithin 4\ntext\ntopic 4 B\ntext"),
              "Help file, line 2: a topic within one that does not stand before it");
    EXPECT_EQ(Refusal("topic 3 A\nwithin 3\ntext"),
              "Help file, line 2: a topic within one that does not stand before it");
}

TEST(HelpFile, FindsATopicByItsNumber) {
    const HelpFile file(kThreeTopics);
    EXPECT_EQ(file.Find(50)->title, "Reports");
}

TEST(HelpFile, FindsTheFirstTopicForAnUnknownNumber) {
    const HelpFile file(kThreeTopics);
    EXPECT_EQ(file.Find(99)->title, "Contents");
    EXPECT_EQ(file.Find(-1)->title, "Contents");
}

TEST(HelpSearch, FindsAllTopicsWithoutWords) {
    EXPECT_EQ(Numbers(HelpFile(kThreeTopics).Search(" ")), (std::vector<int>{1, 31, 50}));
}

TEST(HelpSearch, PutsTopicsWithTheWordsInTheTitleFirst) {
    EXPECT_EQ(Numbers(HelpFile(kThreeTopics).Search("INCOME")), (std::vector<int>{31, 1, 50}));
}

TEST(HelpSearch, WantsAllWordsInAnyOrder) {
    EXPECT_EQ(Numbers(HelpFile(kThreeTopics).Search("year income")), (std::vector<int>{50}));
    EXPECT_TRUE(HelpFile(kThreeTopics).Search("year nothing").empty());
}

TEST(HelpSearch, LooksAtNamesAndTheirText) {
    EXPECT_EQ(Numbers(HelpFile(kThreeTopics).Search("salary")), (std::vector<int>{31}));
    EXPECT_EQ(Numbers(HelpFile(kThreeTopics).Search("earn")), (std::vector<int>{31}));
}

TEST(HelpSearch, LooksAtFiguresAndTheirFormulas) {
    const HelpFile file("topic 1 A\ntext\ntopic 2 B\nfigure Cash left\n  = Rent - Rates\n  = 17,270\n");
    for (const char* words : {"cash left", "rent", "17,270"})
        EXPECT_EQ(Numbers(file.Search(words)), (std::vector<int>{2})) << words;
}

}  // namespace
}  // namespace ledgix::shell
