#include "page_facts.h"

#include <algorithm>

#include "font_widths.h"

namespace ledgix::test {

namespace {

using zq::Document;
using zq::Drawing;
using zq::PrintedText;

constexpr std::size_t kFooterTexts = 3;
// Takes up what summing up measures loses, in points.
constexpr double kTolerance = 0.01;

struct Box {
    double left;
    double top;
    double right;
    double bottom;
};

Box BoxOf(const PrintedText& text) {
    return {text.left, text.baseline - zq::kAscent * text.size, text.left + text.width,
            text.baseline + zq::kDescent * text.size};
}

bool Contains(const Box& outer, const Box& inner) {
    return inner.left >= outer.left - kTolerance && inner.right <= outer.right + kTolerance &&
           inner.top >= outer.top - kTolerance && inner.bottom <= outer.bottom + kTolerance;
}

std::string Told(const Document& document, const Drawing& page, const std::string& what) {
    return "page " + std::to_string(&page - document.pages.data() + 1) + ": " + what;
}

// The lines of letters may share the space between them; more than that is no longer one below the other.
bool Collide(const PrintedText& one, const PrintedText& other) {
    constexpr double kLineSpace = 0.1;
    const double blank = zq::AdvanceWidth(U' ', false) * std::min(one.size, other.size);
    const Box a = BoxOf(one);
    const Box b = BoxOf(other);
    const double shared = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return shared > kLineSpace * std::min(one.size, other.size) && a.left < b.right + blank - kTolerance &&
           b.left < a.right + blank - kTolerance;
}

}  // namespace

std::string WithoutBlanks(const std::string& text) {
    std::string rest = text;
    std::erase_if(rest, [](char c) { return c == ' ' || c == '\r' || c == '\n' || c == '\t'; });
    return rest;
}

std::string TextOfBands(const Document& document) {
    std::string text;
    for (const zq::PrintedBand& band : document.bands)
        for (const zq::PrintedCell& cell : band.cells)
            text += WithoutBlanks(cell.text);
    return text;
}

std::string TextOfPages(const Document& document) {
    std::string text;
    for (const Drawing& page : document.pages)
        for (std::size_t i = 0; i + kFooterTexts < page.texts.size(); ++i)
            text += WithoutBlanks(page.texts[i].text);
    return text;
}

std::vector<std::string> FooterOf(const Drawing& page) {
    std::vector<std::string> footer;
    for (std::size_t i = page.texts.size() - std::min(page.texts.size(), kFooterTexts); i < page.texts.size(); ++i)
        footer.push_back(page.texts[i].text);
    return footer;
}

std::vector<std::string> OutsideOf(const Document& document, const zq::ReportTemplate& measures) {
    double footer = measures.footer.before;
    for (const zq::LineTemplate& line : measures.footer.lines)
        footer += line.height;
    Box sheet{measures.left, measures.top, document.page_width - measures.right,
              document.page_height - measures.bottom};
    Box body = sheet;
    body.bottom -= footer;
    std::vector<std::string> outside;
    for (const Drawing& page : document.pages) {
        const auto check = [&](const Box& allowed, const Box& box, const std::string& what) {
            if (!Contains(allowed, box))
                outside.push_back(Told(document, page, what));
        };
        for (std::size_t i = 0; i < page.texts.size(); ++i)
            check(i + kFooterTexts < page.texts.size() ? body : sheet, BoxOf(page.texts[i]), page.texts[i].text);
        for (const zq::PrintedPicture& picture : page.pictures)
            check(body, {picture.left, picture.top, picture.left + picture.width, picture.top + picture.height},
                  "a picture");
        for (const zq::PrintedBox& box : page.boxes)
            check(body, {box.left, box.top, box.left + box.width, box.top + box.height}, "a box");
        for (const zq::PrintedLine& line : page.lines)
            check(sheet, {line.x1, line.y1, line.x2, line.y2}, "a line");
    }
    return outside;
}

std::vector<std::string> Collisions(const Document& document) {
    std::vector<std::string> collisions;
    for (const Drawing& page : document.pages)
        for (std::size_t i = 0; i < page.texts.size(); ++i) {
            for (std::size_t k = i + 1; k < page.texts.size(); ++k)
                if (Collide(page.texts[i], page.texts[k]))
                    collisions.push_back(Told(document, page, page.texts[i].text + " and " + page.texts[k].text));
            for (const zq::PrintedPicture& picture : page.pictures) {
                const Box text = BoxOf(page.texts[i]);
                if (text.right > picture.left && text.left < picture.left + picture.width &&
                    text.top < picture.top + picture.height && text.bottom > picture.top)
                    collisions.push_back(Told(document, page, page.texts[i].text + " and a picture"));
            }
        }
    return collisions;
}

std::vector<std::string> Unreadable(const Document& document) {
    constexpr double kSmallPrint = 5;
    constexpr double kPressed = 0.95;
    std::vector<std::string> unreadable;
    for (const Drawing& page : document.pages)
        for (const PrintedText& text : page.texts)
            if (text.size < kSmallPrint || text.width < kPressed * zq::TextWidth(text.text, text.size, text.bold))
                unreadable.push_back(Told(
                    document, page,
                    text.text + ", " + std::to_string(text.size) + " points, " + std::to_string(text.width) + " wide"));
    return unreadable;
}

std::vector<std::string> PartedBands(const Document& document) {
    std::vector<std::string> parted;
    std::size_t page = 0;
    std::size_t text = 0;
    for (const zq::PrintedBand& band : document.bands) {
        std::size_t wanted = 0;
        for (const zq::PrintedCell& cell : band.cells)
            wanted += WithoutBlanks(cell.text).size();
        for (bool begun = false; wanted > 0 && page < document.pages.size();) {
            if (text + kFooterTexts >= document.pages[page].texts.size()) {
                if (begun)
                    parted.push_back(Told(document, document.pages[page], "band " + band.name + " goes on"));
                ++page;
                text = 0;
                continue;
            }
            begun = true;
            wanted -= std::min(wanted, WithoutBlanks(document.pages[page].texts[text++].text).size());
        }
    }
    return parted;
}

}  // namespace ledgix::test
