#include "text_table.h"

#include <algorithm>
#include <ostream>

#include "conversions.h"
#include "text.h"

namespace ledgix::cli {

namespace {

std::size_t Width(const std::string& text) {
    return runtime::ToUtf32(text).size();
}

// On one line: what would break it stands as a blank.
std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
    return text;
}

}  // namespace

std::string CellText(const runtime::Variant& value) {
    return runtime::IsNull(value) ? std::string() : runtime::ToText(value);
}

bool IsNumber(const runtime::Variant& value) {
    using runtime::Variant;
    return !std::holds_alternative<bool>(value) && !std::holds_alternative<runtime::Date>(value) &&
           !std::holds_alternative<std::string>(value) && !std::holds_alternative<runtime::Binary>(value) &&
           !std::holds_alternative<runtime::Guid>(value) && !runtime::IsNull(value);
}

TextTable::TextTable(std::vector<std::string> headings)
    : widths_(headings.size()), right_aligned_(headings.size(), false) {
    for (std::size_t i = 0; i < headings.size(); ++i)
        widths_[i] = Width(headings[i]);
    rows_.push_back(std::move(headings));
}

void TextTable::AddRow(const std::vector<runtime::Variant>& values) {
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < values.size(); ++i) {
        cells.push_back(OnOneLine(CellText(values[i])));
        widths_[i] = std::max(widths_[i], Width(cells.back()));
        if (IsNumber(values[i]))
            right_aligned_[i] = true;
    }
    rows_.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& out) const {
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        std::string line;
        for (std::size_t i = 0; i < widths_.size(); ++i) {
            const std::string gap(widths_[i] - Width(rows_[row][i]), ' ');
            line += (i == 0 ? "" : "  ") + (right_aligned_[i] ? gap + rows_[row][i] : rows_[row][i] + gap);
        }
        out << line.substr(0, line.find_last_not_of(' ') + 1) << "\n";
        if (row > 0)
            continue;
        for (std::size_t i = 0; i < widths_.size(); ++i)
            out << (i == 0 ? "" : "  ") << std::string(widths_[i], '-');
        out << "\n";
    }
}

}  // namespace ledgix::cli
