#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "variant.h"

namespace ledgix::cli {

// A value as a reader wants it: empty for Null, the ISO form of a date.
std::string CellText(const runtime::Variant& value);

// Whether cells of such values are set against the right edge of their column.
bool IsNumber(const runtime::Variant& value);

// Collects rows and prints them with columns as wide as their widest cell.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> headings);

    void AddRow(const std::vector<runtime::Variant>& values);
    void Print(std::ostream& out) const;

private:
    std::vector<std::vector<std::string>> rows_;  // the headings first
    std::vector<std::size_t> widths_;             // in characters
    std::vector<bool> right_aligned_;
};

}  // namespace ledgix::cli
