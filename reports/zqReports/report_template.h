#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document.h"

// A template as it was read: see README.md for its syntax. All measures are points; horizontal places count from the
// left margin, vertical ones from the top of the band's content.
namespace ledgix::zq {

struct ItemTemplate {
    enum class Kind { kField, kLabel, kPicture };

    Kind kind = Kind::kField;
    std::string name;  // none for a label
    std::string text;  // a field's default, a label's text
    double left = 0;
    double right = 0;
    Alignment alignment = Alignment::kLeft;

    // Of texts.
    std::size_t line = 0;
    double size = 0;
    double least_size = 0;
    bool bold = false;
    bool wraps = false;
    bool stretches = false;  // to the end of the texts behind it in its line while all of those are empty
    bool even = false;       // shrinks together with the other even fields of the band, in the whole document
    Colour colour;
    std::optional<Colour> negative;

    // Of pictures.
    double top = 0;
    double height = 0;
};

struct LineTemplate {
    double height = 0;
    bool collapses = false;
};

struct RuleTemplate {
    bool at_top = false;
    double left = 0;
    double right = 0;
    double weight = 0;
    Colour colour;
};

struct FillTemplate {
    double left = 0;
    double right = 0;
    Colour colour;
};

// How an instance differs when a field is empty, or is one of some texts.
struct VariantTemplate {
    std::size_t item = 0;  // the field
    bool when_empty = false;
    std::vector<std::string> texts;
    bool bold = false;
    std::optional<Colour> colour;
    std::optional<FillTemplate> fill;
    std::vector<RuleTemplate> rules;
};

struct BandTemplate {
    std::string name;
    std::string grid;
    bool is_heading = false;
    bool keeps_with_next = false;
    bool runs = false;
    double before = 0;
    double after = 0;
    double height = 0;
    std::vector<LineTemplate> lines;
    std::vector<ItemTemplate> items;
    std::vector<RuleTemplate> rules;
    std::optional<FillTemplate> fill;
    std::vector<VariantTemplate> variants;
};

struct ReportTemplate {
    std::string title;
    std::string typeface = "Liberation Sans";
    double page_width = 0;
    double page_height = 0;
    double left = 0;  // margins
    double right = 0;
    double top = 0;
    double bottom = 0;
    BandTemplate footer;
    std::vector<BandTemplate> bands;
};

}  // namespace ledgix::zq
