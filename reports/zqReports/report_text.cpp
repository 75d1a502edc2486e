#include "report_text.h"

#include <algorithm>
#include <map>
#include <utility>

#include "characters.h"

namespace ledgix::zq {

namespace {

constexpr std::size_t kColumnGap = 2;

std::size_t Columns(const std::string& text) {
    std::size_t columns = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Character c = CharacterAt(text, at);
        columns += static_cast<std::size_t>(TerminalColumns(c.code_point));
        at += c.size;
    }
    return columns;
}

// The columns of one line of a grid, from left to right: the place on the page, and the width in characters.
using Place = std::pair<double, double>;
using TextColumns = std::map<Place, std::size_t>;
using Grids = std::map<std::pair<std::string, int>, TextColumns>;

Grids MeasureColumns(const Document& document) {
    Grids grids;
    for (const PrintedBand& band : document.bands)
        for (const PrintedCell& cell : band.cells) {
            std::size_t& width = grids[{band.grid, cell.line}][{cell.left, cell.right}];
            width = std::max(width, Columns(cell.text));
        }
    return grids;
}

std::string Padded(const PrintedCell& cell, std::size_t width) {
    const std::size_t spare = width - Columns(cell.text);
    const std::size_t before = cell.alignment == Alignment::kLeft     ? 0
                               : cell.alignment == Alignment::kCenter ? spare / 2
                                                                      : spare;
    return std::string(before, ' ') + cell.text + std::string(spare - before, ' ');
}

const PrintedCell* FindCell(const PrintedBand& band, int line, const Place& place) {
    for (const PrintedCell& cell : band.cells)
        if (cell.line == line && Place(cell.left, cell.right) == place)
            return &cell;
    return nullptr;
}

// One line of a band: its cells, each in its column.
std::string LineText(const PrintedBand& band, int line, const TextColumns& columns) {
    std::string text;
    for (const auto& [place, width] : columns) {
        if (width == 0)
            continue;
        const PrintedCell* cell = FindCell(band, line, place);
        text += cell ? Padded(*cell, width) : std::string(width, ' ');
        text += std::string(kColumnGap, ' ');
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

class TextWriter {
public:
    explicit TextWriter(const Document& document) : grids_(MeasureColumns(document)) {}

    void Write(const PrintedBand& band) {
        const bool is_spacer = band.cells.empty() && band.fields.empty();
        if (!is_spacer && (band.gap_before || gap_is_due_))
            WriteGap();
        gap_is_due_ = band.gap_after && !band.is_heading;
        if (is_spacer)
            text_ += '\n';
        for (const auto& [key, columns] : grids_)
            if (key.first == band.grid && HasLine(band, key.second))
                WriteLine(band, LineText(band, key.second, columns));
    }

    std::string Take() { return std::move(text_); }

private:
    static bool HasLine(const PrintedBand& band, int line) {
        return std::any_of(band.cells.begin(), band.cells.end(),
                           [line](const PrintedCell& cell) { return cell.line == line; });
    }

    void WriteGap() {
        if (!text_.empty() && !text_.ends_with("\n\n"))
            text_ += '\n';
    }

    void WriteLine(const PrintedBand& band, const std::string& line) {
        text_ += line + '\n';
        if (band.is_heading)
            text_ += std::string(Columns(line), '=') + '\n';
    }

    Grids grids_;
    std::string text_;
    bool gap_is_due_ = false;
};

}  // namespace

std::string ToText(const Document& document) {
    TextWriter writer(document);
    for (const PrintedBand& band : document.bands)
        writer.Write(band);
    return writer.Take();
}

}  // namespace ledgix::zq
