#include "template_reader.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "band_reader.h"
#include "placeholders.h"
#include "template_line.h"
#include "template_values.h"
#include "text.h"

namespace ledgix::zq {

namespace {

// What margins must leave of a page in either direction, so that it can hold something.
constexpr double kLeastArea = 144;

struct Size {
    double width;
    double height;
};

constexpr Size kA4{210 / 25.4 * 72, 297 / 25.4 * 72};
constexpr Size kLetter{612, 792};

class TemplateReader {
public:
    explicit TemplateReader(runtime::Paper paper) : paper_(paper == runtime::Paper::kA4 ? kA4 : kLetter) {}

    ReportTemplate Read(std::string_view text);

private:
    using Statement = void (TemplateReader::*)(TemplateLine&);

    static const std::map<std::string_view, Statement>& Statements();

    void ReadLine(TemplateLine& line);
    void ReadSignature(TemplateLine& line);
    void ReadInBand(const std::string& word, TemplateLine& line);

    void ReadTitle(TemplateLine& line);
    void ReadPage(TemplateLine& line);
    void ReadMargins(TemplateLine& line);
    void ReadTypeface(TemplateLine& line) { report_.typeface = line.Text("the typeface"); }
    void ReadColour(TemplateLine& line) { values_.DefineColour(line); }
    void ReadTextDefaults(TemplateLine& line);
    void ReadBand(TemplateLine& line);
    void ReadBandOption(TemplateLine& line, BandTemplate& band);
    void ReadFooter(TemplateLine& line);

    bool InFooter() const { return band_ == &report_.footer; }
    void CheckWhole(const TemplateLine& end) const;
    bool Knows(std::string_view placeholder, bool in_footer) const;

    // Something that can only be checked when the whole template has been read.
    struct Noted {
        TemplateLine line;
        std::string text;
        bool in_footer = false;
    };

    Size paper_;
    ReportTemplate report_;
    TemplateValues values_;
    BandTemplate* band_ = nullptr;  // the band that is being read
    bool has_signature_ = false;
    bool has_footer_ = false;
    std::vector<Noted> with_placeholders_;
    std::vector<Noted> grids_;
};

const std::map<std::string_view, TemplateReader::Statement>& TemplateReader::Statements() {
    static const std::map<std::string_view, Statement> statements{
        {"title", &TemplateReader::ReadTitle},     {"page", &TemplateReader::ReadPage},
        {"margins", &TemplateReader::ReadMargins}, {"typeface", &TemplateReader::ReadTypeface},
        {"colour", &TemplateReader::ReadColour},   {"text", &TemplateReader::ReadTextDefaults},
        {"band", &TemplateReader::ReadBand},       {"footer", &TemplateReader::ReadFooter}};
    return statements;
}

ReportTemplate TemplateReader::Read(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    int number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        TemplateLine line(text.substr(0, end), ++number);
        if (!line.AtEnd())
            ReadLine(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    CheckWhole(TemplateLine("", number + 1));
    return std::move(report_);
}

void TemplateReader::ReadLine(TemplateLine& line) {
    if (!has_signature_)
        return ReadSignature(line);
    const std::string word = line.Word("a statement");
    if (const auto statement = Statements().find(word); statement != Statements().end())
        (this->*statement->second)(line);
    else
        ReadInBand(word, line);
    line.End();
}

void TemplateReader::ReadSignature(TemplateLine& line) {
    for (const std::string_view word : {"ledgix", "report", "1"})
        if (!line.TakeWord(word))
            line.Fail("a report template begins with 'ledgix report 1'");
    line.End();
    has_signature_ = true;
}

void TemplateReader::ReadInBand(const std::string& word, TemplateLine& line) {
    if (!IsBandStatement(word))
        line.Fail("unknown word '" + word + "'");
    if (!band_)
        line.Fail("'" + word + "' belongs into a band");
    if (InFooter() && (word == "field" || word == "picture"))
        line.Fail("a footer has labels only");
    ReadBandStatement(word, line, values_, *band_);
    if (InFooter() && word == "label")
        with_placeholders_.push_back({line, band_->items.back().text, true});
}

void TemplateReader::ReadTitle(TemplateLine& line) {
    report_.title = line.Text("the title");
    with_placeholders_.push_back({line, report_.title, false});
}

void TemplateReader::ReadPage(TemplateLine& line) {
    if (report_.page_width > 0)
        line.Fail("the page is described twice");
    const bool landscape = line.TakeWord("landscape");
    if (!landscape && !line.TakeWord("portrait"))
        line.Fail("a page is 'portrait' or 'landscape'");
    report_.page_width = landscape ? paper_.height : paper_.width;
    report_.page_height = landscape ? paper_.width : paper_.height;
}

void TemplateReader::ReadMargins(TemplateLine& line) {
    if (report_.page_width <= 0)
        line.Fail("the margins follow the page");
    if (values_.printable_width > 0)
        line.Fail("the margins are given twice");
    report_.left = values_.Millimetres(line, "the left margin");
    report_.right = values_.Millimetres(line, "the right margin");
    report_.top = values_.Millimetres(line, "the top margin");
    report_.bottom = values_.Millimetres(line, "the bottom margin");
    values_.printable_width = report_.page_width - report_.left - report_.right;
    if (values_.printable_width < kLeastArea || report_.page_height - report_.top - report_.bottom < kLeastArea)
        line.Fail("the margins leave no room on the page");
}

void TemplateReader::ReadTextDefaults(TemplateLine& line) {
    values_.text_size = values_.TextSize(line);
    values_.text_colour = values_.ColourOf(line);
}

void TemplateReader::ReadBand(TemplateLine& line) {
    if (values_.printable_width <= 0)
        line.Fail("page and margins come before the first band");
    BandTemplate band;
    band.name = band.grid = line.Word("the band's name");
    for (const BandTemplate& other : report_.bands)
        if (runtime::EqualsIgnoringCase(other.name, band.name))
            line.Fail("there are two bands '" + band.name + "'");
    while (!line.AtEnd())
        ReadBandOption(line, band);
    report_.bands.push_back(std::move(band));
    band_ = &report_.bands.back();
}

void TemplateReader::ReadBandOption(TemplateLine& line, BandTemplate& band) {
    const std::string option = line.Word("an option");
    if (option == "heading") {
        band.is_heading = band.keeps_with_next = true;
    } else if (option == "keep") {
        band.keeps_with_next = true;
    } else if (option == "run") {
        band.runs = true;
    } else if (option == "grid") {
        band.grid = line.Word("a band's name");
        grids_.push_back({line, band.grid});
    } else {
        line.Fail("unknown word '" + option + "'");
    }
}

void TemplateReader::ReadFooter(TemplateLine& line) {
    if (values_.printable_width <= 0)
        line.Fail("page and margins come before the footer");
    if (std::exchange(has_footer_, true))
        line.Fail("there are two footers");
    band_ = &report_.footer;
}

void TemplateReader::CheckWhole(const TemplateLine& end) const {
    if (!has_signature_)
        end.Fail("a report template begins with 'ledgix report 1'");
    if (report_.bands.empty())
        end.Fail("the template has no bands");
    for (const Noted& grid : grids_)
        if (std::none_of(report_.bands.begin(), report_.bands.end(),
                         [&](const BandTemplate& band) { return band.name == grid.text; }))
            grid.line.Fail("there is no band '" + grid.text + "'");
    for (const Noted& noted : with_placeholders_)
        ExpandPlaceholders(noted.text, [&](std::string_view name) -> std::optional<std::string> {
            if (!Knows(name, noted.in_footer))
                noted.line.Fail("nothing is known as '{" + std::string(name) + "}'");
            return std::nullopt;
        });
}

bool TemplateReader::Knows(std::string_view placeholder, bool in_footer) const {
    if (placeholder == "program" || placeholder == "date")
        return true;
    if (placeholder == "page" || placeholder == "pages")
        return in_footer;
    for (const BandTemplate& band : report_.bands)
        for (const ItemTemplate& item : band.items)
            if (item.kind == ItemTemplate::Kind::kField && placeholder == band.name + "." + item.name)
                return true;
    return false;
}

}  // namespace

ReportTemplate ReadTemplate(std::string_view text, runtime::Paper paper) {
    return TemplateReader(paper).Read(text);
}

}  // namespace ledgix::zq
