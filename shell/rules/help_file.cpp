#include "help_file.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "conversions.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::shell {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNameMark = " :: ";
constexpr std::string_view kStepMark = "= ";

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

// Takes the word up to the next blank off the front.
std::string TakeWord(std::string& text) {
    const auto end = text.find(' ');
    std::string word = text.substr(0, end);
    text = end == std::string::npos ? std::string() : Trimmed(std::string_view(text).substr(end));
    return word;
}

// Reads one line after the other into pages.
class Reader {
public:
    std::vector<HelpPage> Read(std::string_view text) {
        if (text.starts_with(kByteOrderMark))
            text.remove_prefix(kByteOrderMark.size());
        std::istringstream lines{std::string(text)};
        std::string line;
        while (std::getline(lines, line)) {
            ++line_;
            Take(line);
        }
        CheckPage();
        CheckReferences();
        return std::move(pages_);
    }

private:
    struct Reference {
        int context;
        int line;
    };

    [[noreturn]] static void Refuse(int line, std::string_view reason) {
        std::string description = "Help file, line ";
        description += runtime::ToText(line);
        description += ": ";
        description += reason;
        runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument, description);
    }

    void Take(const std::string& line) {
        std::string text = Trimmed(line);
        if (line.starts_with(';'))
            return;
        if (text.empty()) {
            open_ = false;
            return;
        }
        if (line.starts_with("topic "))
            return BeginPage(text);
        if (pages_.empty())
            Refuse(line_, "text before the first topic");
        if (line.starts_with(' ') && open_)
            return Continue(text);
        if (line.starts_with("within "))
            return TakeWithin(text);
        if (line.starts_with("see "))
            return TakeSee(text);
        if (line.starts_with("figure "))
            return TakeFigure(text);
        TakeText(text);
    }

    void BeginPage(std::string& text) {
        CheckPage();
        TakeWord(text);
        HelpPage page;
        page.context = Number(TakeWord(text));
        page.title = text;
        if (page.title.empty())
            Refuse(line_, "a topic without a title");
        if (Has(page.context))
            Refuse(line_, "a topic number that is given twice");
        pages_.push_back(std::move(page));
        page_line_ = line_;
        open_ = false;
    }

    void TakeWithin(std::string& text) {
        TakeWord(text);
        const int parent = Number(TakeWord(text));
        if (parent == pages_.back().context || !Has(parent))
            Refuse(line_, "a topic within one that does not stand before it");
        pages_.back().within = parent;
    }

    void TakeSee(std::string& text) {
        TakeWord(text);
        while (!text.empty()) {
            const int context = Number(TakeWord(text));
            pages_.back().see.push_back(context);
            references_.push_back({context, line_});
        }
        open_ = false;
    }

    void TakeFigure(std::string& text) {
        TakeWord(text);
        const auto mark = text.find(kStepMark);
        const std::string name = Trimmed(std::string_view(text).substr(0, mark));
        Add({HelpBlock::Kind::kFigure, name, mark == std::string::npos ? std::string() : text.substr(mark)});
    }

    void TakeText(const std::string& text) {
        using Kind = HelpBlock::Kind;
        const auto mark = text.find(kNameMark);
        if (text.starts_with("= ")) {
            Add({Kind::kHeading, "", Trimmed(std::string_view(text).substr(2))});
            open_ = false;
        } else if (text.starts_with("- ")) {
            Add({Kind::kItem, "", Trimmed(std::string_view(text).substr(2))});
        } else if (mark != std::string::npos) {
            Add({Kind::kName, Trimmed(text.substr(0, mark)), Trimmed(text.substr(mark + kNameMark.size()))});
        } else if (open_ && pages_.back().blocks.back().kind == Kind::kParagraph) {
            Continue(text);
        } else {
            Add({Kind::kParagraph, "", text});
        }
    }

    void Add(HelpBlock block) {
        CheckFigure();
        block_line_ = line_;
        pages_.back().blocks.push_back(std::move(block));
        open_ = true;
    }

    void Continue(const std::string& text) {
        std::string& block = pages_.back().blocks.back().text;
        if (!block.empty())
            block += ' ';
        block += text;
    }

    int Number(const std::string& word) const {
        int number = 0;
        const char* const end = word.data() + word.size();
        const auto [stop, error] = std::from_chars(word.data(), end, number);
        if (error != std::errc() || stop != end || number < 1)
            Refuse(line_, "a topic number is missing");
        return number;
    }

    bool Has(int context) const {
        return std::any_of(pages_.begin(), pages_.end(),
                           [context](const HelpPage& page) { return page.context == context; });
    }

    void CheckPage() const {
        if (pages_.empty())
            return;
        if (pages_.back().blocks.empty())
            Refuse(page_line_, "a topic without text");
        CheckFigure();
    }

    // The last block is complete.
    void CheckFigure() const {
        const std::vector<HelpBlock>& blocks = pages_.back().blocks;
        if (blocks.empty() || blocks.back().kind != HelpBlock::Kind::kFigure)
            return;
        if (blocks.back().name.empty() || FigureSteps(blocks.back()).empty())
            Refuse(block_line_, "a figure without a name or a value");
    }

    void CheckReferences() const {
        for (const Reference& reference : references_)
            if (!Has(reference.context))
                Refuse(reference.line, "a reference to a topic that is not there");
    }

    std::vector<HelpPage> pages_;
    std::vector<Reference> references_;
    int line_ = 0;
    int page_line_ = 0;
    int block_line_ = 0;
    bool open_ = false;  // the next line of text may belong to the last block
};

bool HoldsAll(const std::string& text, const std::vector<std::string>& words) {
    return std::all_of(words.begin(), words.end(),
                       [&text](const std::string& word) { return text.find(word) != std::string::npos; });
}

std::string WholeText(const HelpPage& page) {
    std::string text = page.title;
    for (const HelpBlock& block : page.blocks) {
        text += '\n';
        text += block.name;
        text += '\n';
        text += block.text;
    }
    return runtime::FoldCase(text);
}

}  // namespace

std::vector<std::string> FigureSteps(const HelpBlock& figure) {
    std::vector<std::string> steps;
    std::string_view rest = figure.text;
    while (rest.starts_with(kStepMark)) {
        rest.remove_prefix(kStepMark.size());
        const auto end = std::min(rest.find(" = "), rest.size());
        steps.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return steps;
}

HelpFile::HelpFile(std::string_view text) : pages_(Reader().Read(text)) {}

const HelpPage* HelpFile::Find(int context) const {
    for (const HelpPage& page : pages_)
        if (page.context == context)
            return &page;
    return pages_.empty() ? nullptr : &pages_.front();
}

std::vector<const HelpPage*> HelpFile::Search(std::string_view text) const {
    const std::vector<std::string> words = SearchWords(text);
    std::vector<const HelpPage*> found;
    for (const HelpPage& page : pages_)
        if (HoldsAll(WholeText(page), words))
            found.push_back(&page);
    std::stable_partition(found.begin(), found.end(),
                          [&words](const HelpPage* page) { return HoldsAll(runtime::FoldCase(page->title), words); });
    return found;
}

std::vector<std::string> SearchWords(std::string_view text) {
    std::istringstream stream(runtime::FoldCase(text));
    std::vector<std::string> words;
    std::string word;
    while (stream >> word)
        words.push_back(word);
    return words;
}

}  // namespace ledgix::shell
