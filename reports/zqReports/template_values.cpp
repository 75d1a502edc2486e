#include "template_values.h"

namespace ledgix::zq {

namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;
constexpr double kLargestMm = 400;
constexpr double kLeastTextSize = 4;
constexpr double kLargestTextSize = 72;
constexpr double kLeastWeight = 0.1;
constexpr double kLargestWeight = 10;
constexpr double kHairline = 0.5;
constexpr double kRoundingSlack = 1e-6;
constexpr std::string_view kHexDigits = "0123456789abcdef";

bool IsColourCode(std::string_view word) {
    return word.size() == 7 && word.front() == '#' && word.find_first_not_of(kHexDigits, 1) == word.npos;
}

std::uint8_t HexByte(std::string_view word, std::size_t at) {
    return static_cast<std::uint8_t>(kHexDigits.find(word[at]) * 16 + kHexDigits.find(word[at + 1]));
}

}  // namespace

void TemplateValues::DefineColour(TemplateLine& line) {
    const std::string name = line.Word("the colour's name");
    if (name.starts_with('#') || colours_.contains(name))
        line.Fail("'" + name + "' is no new name for a colour");
    colours_[name] = ColourOf(line);
}

double TemplateValues::Millimetres(TemplateLine& line, std::string_view what) const {
    return line.Number(what, 0, kLargestMm) * kPointsPerMm;
}

double TemplateValues::TextSize(TemplateLine& line, std::string_view what, double most) const {
    return line.Number(what, kLeastTextSize, most);
}

double TemplateValues::TextSize(TemplateLine& line) const {
    return TextSize(line, "the size", kLargestTextSize);
}

double TemplateValues::Place(TemplateLine& line, std::string_view what) const {
    std::string word = line.Word(what);
    double place = 0;
    if (word.ends_with('%')) {
        word.pop_back();
        place = line.NumberIn(word, what, 0, 100) / 100 * printable_width;
    } else {
        place = line.NumberIn(word, what, -kLargestMm, kLargestMm) * kPointsPerMm;
        if (word.starts_with('-'))
            place += printable_width;
    }
    if (place < -kRoundingSlack || place > printable_width + kRoundingSlack)
        line.Fail(std::string(what) + " lies outside of the margins");
    return place;
}

void TemplateValues::Places(TemplateLine& line, double& left, double& right) const {
    left = Place(line, "the left place");
    if (line.Word("'to'") != "to")
        line.Fail("'to' is missing");
    right = Place(line, "the right place");
    if (right <= left)
        line.Fail("the right place is not right of the left one");
}

Colour TemplateValues::ColourOf(TemplateLine& line) const {
    const std::string word = line.Word("a colour");
    if (const auto known = colours_.find(word); known != colours_.end())
        return known->second;
    if (!IsColourCode(word))
        line.Fail("'" + word + "' is no colour");
    return {HexByte(word, 1), HexByte(word, 3), HexByte(word, 5)};
}

Alignment TemplateValues::AlignmentOf(TemplateLine& line) const {
    const std::string word = line.Word("'left', 'center' or 'right'");
    if (word == "left")
        return Alignment::kLeft;
    if (word == "center")
        return Alignment::kCenter;
    if (word != "right")
        line.Fail("'" + word + "' is neither 'left', 'center' nor 'right'");
    return Alignment::kRight;
}

RuleTemplate TemplateValues::Rule(TemplateLine& line) const {
    const std::string edge = line.Word("'top' or 'bottom'");
    if (edge != "top" && edge != "bottom")
        line.Fail("a rule is at the 'top' or at the 'bottom'");
    RuleTemplate rule{edge == "top", 0, printable_width, kHairline, text_colour};
    for (;;) {
        if (line.TakeWord("from"))
            Places(line, rule.left, rule.right);
        else if (line.TakeWord("weight"))
            rule.weight = line.Number("the weight", kLeastWeight, kLargestWeight);
        else if (line.TakeWord("colour"))
            rule.colour = ColourOf(line);
        else
            return rule;
    }
}

FillTemplate TemplateValues::Fill(TemplateLine& line) const {
    FillTemplate fill{0, printable_width, ColourOf(line)};
    if (line.TakeWord("from"))
        Places(line, fill.left, fill.right);
    return fill;
}

}  // namespace ledgix::zq
