#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A finished report as plain values: the list of printed bands, which text, CSV and JSON show, and the pages, which the
// preview, the printer and the PDF draw. All measures are points (1/72 inch) from the page's upper left corner.
namespace ledgix::zq {

enum class Alignment { kLeft, kCenter, kRight };

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Colour&) const = default;
};

// A field with its text at the moment of printing. A picture's text is the path of its file.
struct PrintedField {
    std::string name;  // spelled as in the template
    std::string text;
    bool is_picture = false;
};

// A field or fixed label as it stands in a line of its band: what a text output needs to line up columns.
struct PrintedCell {
    int line = 0;  // within the band
    double left = 0;
    double right = 0;
    Alignment alignment = Alignment::kLeft;
    std::string text;
};

struct PrintedBand {
    std::string name;                  // spelled as in the template
    std::vector<PrintedField> fields;  // in template order, pictures included
    std::vector<PrintedCell> cells;    // in template order; lines that collapsed are left out
    std::string grid;                  // bands of one grid share their text columns
    bool is_heading = false;
    bool gap_before = false;
    bool gap_after = false;
};

struct PrintedBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    Colour colour;
};

struct PrintedLine {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    double weight = 0;
    Colour colour;
};

// A picture is drawn as large as the box allows without distortion, at the box's side that `alignment` names. Content
// that is no picture leaves the box empty.
struct PrintedPicture {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    Alignment alignment = Alignment::kLeft;
    std::shared_ptr<const std::string> content;  // the bytes of the picture's file
};

// One run of text on one line. An output whose typeface runs wider or narrower than `width` keeps to the width, or to
// the edge (or centre) that `alignment` names.
struct PrintedText {
    double left = 0;
    double baseline = 0;
    double width = 0;
    double size = 0;  // of the typeface, in points
    bool bold = false;
    Alignment alignment = Alignment::kLeft;
    Colour colour;
    std::string text;
};

// Drawn in the order of the members: boxes first, texts last. Texts stand in the order of their bands, the footer's
// last.
struct Drawing {
    std::vector<PrintedBox> boxes;
    std::vector<PrintedLine> lines;
    std::vector<PrintedPicture> pictures;
    std::vector<PrintedText> texts;
};

// A row of figures of a chart, one for each of its categories.
struct ChartSeries {
    // kBetween is what lies between the two lines named before it: the first less the second.
    enum class Kind { kLine, kBetween, kBars };

    std::string name;
    Kind kind = Kind::kLine;
    std::vector<double> values;  // amounts of money
};

// The figures that a report shows as a picture beside its pages. The lines share one scale, the bars another one.
struct Chart {
    std::string title;
    std::string category_title;           // "Year"
    std::vector<std::string> categories;  // "0", "1", ...
    std::string lines_title;              // what the lines' scale measures, without the unit
    std::string bars_title;
    std::vector<ChartSeries> series;
};

struct Document {
    std::string title;
    std::string name;  // of a file that the report is saved in, without an extension; may hold any characters
    std::string typeface;
    double page_width = 0;
    double page_height = 0;
    std::vector<PrintedBand> bands;  // in the order of printing
    std::vector<Drawing> pages;      // at least one, once the layout is ended
    std::optional<Chart> chart;      // for the preview; no part of what is printed
};

}  // namespace ledgix::zq
