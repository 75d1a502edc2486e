#include "band_layout.h"

#include <algorithm>
#include <utility>

#include "characters.h"
#include "font_widths.h"
#include "text_fitting.h"

namespace ledgix::zq {

namespace {

using Kind = ItemTemplate::Kind;

// From one baseline of a wrapped text to the next, in parts of the size.
constexpr double kLeading = 1.25;
// Takes up what shrinking a text to its place loses, in points.
constexpr double kTolerance = 1e-6;

bool HoldsLineBreak(const std::string& text) {
    return text.find_first_of("\r\n") != text.npos;
}

bool Holds(const VariantTemplate& variant, const BandInstance& instance) {
    const std::string& text = instance.texts[variant.item];
    if (variant.when_empty)
        return text.empty();
    return std::find(variant.texts.begin(), variant.texts.end(), text) != variant.texts.end();
}

bool IsBold(const ItemTemplate& item, const BandInstance& instance) {
    return item.bold || std::any_of(instance.band->variants.begin(), instance.band->variants.end(),
                                    [&](const VariantTemplate& v) { return v.bold && Holds(v, instance); });
}

// An amount below zero, in any region's way of writing it.
bool IsNegative(const std::string& text) {
    constexpr std::string_view kMinusSign = "\xE2\x88\x92";
    const bool has_digit = text.find_first_of("0123456789") != text.npos;
    return has_digit && (text.find_first_of("-(") != text.npos || text.find(kMinusSign) != text.npos);
}

Colour ColourOf(const ItemTemplate& item, const BandInstance& instance, const std::string& text) {
    if (item.negative && IsNegative(text))
        return *item.negative;
    Colour colour = item.colour;
    for (const VariantTemplate& variant : instance.band->variants)
        if (variant.colour && Holds(variant, instance))
            colour = *variant.colour;
    return colour;
}

// The width that a text has for itself.
double PlaceOf(const BandInstance& instance, std::size_t index) {
    const std::vector<ItemTemplate>& items = instance.band->items;
    const ItemTemplate& item = items[index];
    double right = item.right;
    for (std::size_t i = 0; i < items.size() && item.stretches; ++i) {
        if (items[i].kind == Kind::kPicture || items[i].line != item.line || items[i].left < item.right)
            continue;
        if (!instance.texts[i].empty())
            return item.right - item.left;
        right = std::max(right, items[i].right);
    }
    return right - item.left;
}

// What remains of the size so that the text fits the place on one line; not below the least size.
double ScaleToFit(const ItemTemplate& item, const std::string& line, double place, bool bold) {
    const double width = TextWidth(line, item.size, bold);
    return width <= place ? 1 : std::max(place / width, item.least_size / item.size);
}

class BandLayout {
public:
    BandLayout(const BandInstance& instance, double even_scale)
        : instance_(instance), band_(*instance.band), even_scale_(even_scale) {}

    BandImage LayOut();

private:
    struct CellText {
        const ItemTemplate& item;
        double place;
        bool bold;
        double size;
        std::vector<std::string> lines;
    };

    // Returns the line's height.
    double LayOutLine(std::size_t line, double top);
    CellText TextOf(std::size_t index) const;
    void DrawText(const CellText& text, double baseline);
    void DrawPictures();
    void DrawFill(const FillTemplate& fill);
    void DrawRule(const RuleTemplate& rule);

    const BandInstance& instance_;
    const BandTemplate& band_;
    double even_scale_;
    BandImage image_;
};

BandImage BandLayout::LayOut() {
    image_.before = band_.before;
    image_.after = band_.after;
    double top = 0;
    for (std::size_t line = 0; line < band_.lines.size(); ++line)
        top += LayOutLine(line, top);
    image_.height = std::max(top, band_.height);
    DrawPictures();
    std::optional<FillTemplate> fill = band_.fill;
    std::vector<RuleTemplate> rules = band_.rules;
    for (const VariantTemplate& variant : band_.variants)
        if (Holds(variant, instance_)) {
            fill = variant.fill ? variant.fill : fill;
            rules.insert(rules.end(), variant.rules.begin(), variant.rules.end());
        }
    if (fill)
        DrawFill(*fill);
    for (const RuleTemplate& rule : rules)
        DrawRule(rule);
    return std::move(image_);
}

double BandLayout::LayOutLine(std::size_t line, double top) {
    const LineTemplate& measure = band_.lines[line];
    double largest = 0;
    double extra = 0;
    std::vector<CellText> texts;
    for (std::size_t i = 0; i < band_.items.size(); ++i) {
        const ItemTemplate& item = band_.items[i];
        if (item.kind == Kind::kPicture || item.line != line)
            continue;
        largest = std::max(largest, item.size);
        if (instance_.texts[i].empty())
            continue;
        texts.push_back(TextOf(i));
        extra = std::max(extra, double(texts.back().lines.size() - 1) * kLeading * texts.back().size);
    }
    if (texts.empty() && measure.collapses)
        return 0;
    const double baseline = top + (measure.height - (kAscent + kDescent) * largest) / 2 + kAscent * largest;
    for (const CellText& text : texts)
        DrawText(text, baseline);
    return measure.height + extra;
}

BandLayout::CellText BandLayout::TextOf(std::size_t index) const {
    const ItemTemplate& item = band_.items[index];
    const std::string& text = instance_.texts[index];
    const double place = PlaceOf(instance_, index);
    const bool bold = IsBold(item, instance_);
    const std::string line = OneLine(text);
    const double size = item.size * (item.even ? even_scale_ : ScaleToFit(item, line, place, bold));
    const bool fits = TextWidth(line, size, bold) <= place + kTolerance;
    if (item.wraps && (!fits || HoldsLineBreak(text)))
        return {item, place, bold, item.size, WrappedLines(text, place, item.size, bold)};
    return {item, place, bold, size, {line}};
}

void BandLayout::DrawText(const CellText& text, double baseline) {
    const ItemTemplate& item = text.item;
    for (const std::string& line : text.lines) {
        // A text that is still too wide at its least size is set narrower.
        const double width = std::min(TextWidth(line, text.size, text.bold), text.place);
        const double spare = text.place - width;
        const double left = item.left + (item.alignment == Alignment::kLeft     ? 0
                                         : item.alignment == Alignment::kCenter ? spare / 2
                                                                                : spare);
        if (!line.empty())
            image_.drawing.texts.push_back(
                {left, baseline, width, text.size, text.bold, item.alignment, ColourOf(item, instance_, line), line});
        baseline += kLeading * text.size;
    }
}

void BandLayout::DrawPictures() {
    for (std::size_t i = 0; i < band_.items.size(); ++i) {
        const ItemTemplate& item = band_.items[i];
        if (item.kind != Kind::kPicture)
            continue;
        image_.height = std::max(image_.height, item.top + item.height);
        if (instance_.pictures[i])
            image_.drawing.pictures.push_back(
                {item.left, item.top, item.right - item.left, item.height, item.alignment, instance_.pictures[i]});
    }
}

void BandLayout::DrawFill(const FillTemplate& fill) {
    image_.drawing.boxes.push_back({fill.left, 0, fill.right - fill.left, image_.height, fill.colour});
}

void BandLayout::DrawRule(const RuleTemplate& rule) {
    const double y = rule.at_top ? 0 : image_.height;
    image_.drawing.lines.push_back({rule.left, y, rule.right, y, rule.weight, rule.colour});
}

bool IsCollapsed(const BandInstance& instance, std::size_t line) {
    if (!instance.band->lines[line].collapses)
        return false;
    for (std::size_t i = 0; i < instance.texts.size(); ++i) {
        const ItemTemplate& item = instance.band->items[i];
        if (item.kind != Kind::kPicture && item.line == line && !instance.texts[i].empty())
            return false;
    }
    return true;
}

}  // namespace

bool BandImage::IsBlank() const {
    return drawing.boxes.empty() && drawing.lines.empty() && drawing.pictures.empty() && drawing.texts.empty();
}

double EvenScale(const BandInstance& instance) {
    double scale = 1;
    for (std::size_t i = 0; i < instance.texts.size(); ++i) {
        const ItemTemplate& item = instance.band->items[i];
        if (item.even && !item.wraps)
            scale = std::min(
                scale, ScaleToFit(item, OneLine(instance.texts[i]), PlaceOf(instance, i), IsBold(item, instance)));
    }
    return scale;
}

BandImage LayOutBand(const BandInstance& instance, double even_scale) {
    return BandLayout(instance, even_scale).LayOut();
}

PrintedBand ToPrintedBand(const BandInstance& instance) {
    const BandTemplate& band = *instance.band;
    PrintedBand printed;
    printed.name = band.name;
    printed.grid = band.grid;
    printed.is_heading = band.is_heading;
    printed.gap_before = band.before > 0;
    printed.gap_after = band.after > 0;
    for (std::size_t i = 0; i < band.items.size(); ++i) {
        const ItemTemplate& item = band.items[i];
        if (item.kind != Kind::kLabel)
            printed.fields.push_back({item.name, instance.texts[i], item.kind == Kind::kPicture});
        if (item.kind != Kind::kPicture && !IsCollapsed(instance, item.line))
            printed.cells.push_back(
                {static_cast<int>(item.line), item.left, item.right, item.alignment, OneLine(instance.texts[i])});
    }
    return printed;
}

}  // namespace ledgix::zq
