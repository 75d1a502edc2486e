#include "band_reader.h"

#include <algorithm>
#include <map>
#include <utility>

#include "text.h"

namespace ledgix::zq {

namespace {

// A text that is too wide for its place and does not wrap shrinks to this size, in points, unless the template names
// another.
constexpr double kLeastSize = 6;

// The statement that is being read, and what it goes into.
struct Reading {
    TemplateLine& line;
    const TemplateValues& values;
    BandTemplate& band;
};

void AddItem(const Reading& at, ItemTemplate item) {
    for (const ItemTemplate& other : at.band.items)
        if (!item.name.empty() && runtime::EqualsIgnoringCase(other.name, item.name))
            at.line.Fail("the band has two fields '" + item.name + "'");
    at.band.items.push_back(std::move(item));
}

void ReadSizes(const Reading& at, ItemTemplate& item) {
    item.size = at.values.TextSize(at.line);
    item.least_size = at.line.TakeWord("least") ? at.values.TextSize(at.line, "the least size", item.size) : 0;
}

void ReadTextOption(const Reading& at, ItemTemplate& item) {
    const std::string option = at.line.Word("an option");
    if (option == "from")
        at.values.Places(at.line, item.left, item.right);
    else if (option == "align")
        item.alignment = at.values.AlignmentOf(at.line);
    else if (option == "size")
        ReadSizes(at, item);
    else if (option == "bold")
        item.bold = true;
    else if (option == "wrap")
        item.wraps = true;
    else if (option == "stretch")
        item.stretches = true;
    else if (option == "even")
        item.even = true;
    else if (option == "colour")
        item.colour = at.values.ColourOf(at.line);
    else if (option == "negative")
        item.negative = at.values.ColourOf(at.line);
    else if (option == "default" && item.kind == ItemTemplate::Kind::kField)
        item.text = at.line.Text("the default text");
    else
        at.line.Fail("unknown word '" + option + "'");
}

void ReadText(const Reading& at, ItemTemplate item) {
    if (at.band.lines.empty())
        at.line.Fail("a text belongs into a line");
    item.line = at.band.lines.size() - 1;
    item.right = at.values.printable_width;
    item.size = at.values.text_size;
    item.colour = at.values.text_colour;
    while (!at.line.AtEnd())
        ReadTextOption(at, item);
    if (item.least_size <= 0)
        item.least_size = item.wraps ? item.size : std::min(kLeastSize, item.size);
    AddItem(at, std::move(item));
}

void ReadField(const Reading& at) {
    ItemTemplate item;
    item.name = at.line.Word("the field's name");
    ReadText(at, std::move(item));
}

void ReadLabel(const Reading& at) {
    ItemTemplate item;
    item.kind = ItemTemplate::Kind::kLabel;
    item.text = at.line.Text("the label's text");
    ReadText(at, std::move(item));
}

void ReadPicture(const Reading& at) {
    ItemTemplate item;
    item.kind = ItemTemplate::Kind::kPicture;
    item.name = at.line.Word("the picture's name");
    item.right = at.values.printable_width;
    while (!at.line.AtEnd()) {
        const std::string option = at.line.Word("an option");
        if (option == "from")
            at.values.Places(at.line, item.left, item.right);
        else if (option == "align")
            item.alignment = at.values.AlignmentOf(at.line);
        else if (option == "top")
            item.top = at.values.Millimetres(at.line, "the top");
        else if (option == "height")
            item.height = at.values.Millimetres(at.line, "the height");
        else
            at.line.Fail("unknown word '" + option + "'");
    }
    if (item.height <= 0)
        at.line.Fail("a picture needs a height");
    AddItem(at, std::move(item));
}

void ReadTextLine(const Reading& at) {
    LineTemplate line;
    line.height = at.values.Millimetres(at.line, "the line's height");
    line.collapses = at.line.TakeWord("collapse");
    at.band.lines.push_back(line);
}

void ReadVariantOption(const Reading& at, VariantTemplate& variant) {
    const std::string option = at.line.Word("an option");
    if (option == "bold")
        variant.bold = true;
    else if (option == "colour")
        variant.colour = at.values.ColourOf(at.line);
    else if (option == "fill")
        variant.fill = at.values.Fill(at.line);
    else if (option == "rule")
        variant.rules.push_back(at.values.Rule(at.line));
    else
        at.line.Fail("unknown word '" + option + "'");
}

void ReadVariant(const Reading& at) {
    const std::string name = at.line.Word("a field's name");
    const auto item = std::find_if(at.band.items.begin(), at.band.items.end(), [&](const ItemTemplate& one) {
        return one.kind == ItemTemplate::Kind::kField && runtime::EqualsIgnoringCase(one.name, name);
    });
    if (item == at.band.items.end())
        at.line.Fail("the band has no field '" + name + "'");
    VariantTemplate variant;
    variant.item = static_cast<std::size_t>(item - at.band.items.begin());
    variant.when_empty = at.line.TakeWord("empty");
    if (!variant.when_empty) {
        if (!at.line.TakeWord("is"))
            at.line.Fail("a field can be 'empty', or 'is' one of some texts");
        do
            variant.texts.push_back(at.line.Text("a text"));
        while (at.line.NextIsText());
    }
    while (!at.line.AtEnd())
        ReadVariantOption(at, variant);
    at.band.variants.push_back(std::move(variant));
}

void ReadBefore(const Reading& at) {
    at.band.before = at.values.Millimetres(at.line, "the space before");
}
void ReadAfter(const Reading& at) {
    at.band.after = at.values.Millimetres(at.line, "the space after");
}
void ReadHeight(const Reading& at) {
    at.band.height = at.values.Millimetres(at.line, "the height");
}
void ReadRule(const Reading& at) {
    at.band.rules.push_back(at.values.Rule(at.line));
}
void ReadFill(const Reading& at) {
    at.band.fill = at.values.Fill(at.line);
}

using Statement = void (*)(const Reading&);

const std::map<std::string_view, Statement>& Statements() {
    static const std::map<std::string_view, Statement> statements{
        {"before", ReadBefore}, {"after", ReadAfter}, {"height", ReadHeight},   {"line", ReadTextLine},
        {"field", ReadField},   {"label", ReadLabel}, {"picture", ReadPicture}, {"rule", ReadRule},
        {"fill", ReadFill},     {"when", ReadVariant}};
    return statements;
}

}  // namespace

bool IsBandStatement(const std::string& word) {
    return Statements().contains(word);
}

void ReadBandStatement(const std::string& word, TemplateLine& line, const TemplateValues& values, BandTemplate& band) {
    Statements().at(word)({line, values, band});
}

}  // namespace ledgix::zq
