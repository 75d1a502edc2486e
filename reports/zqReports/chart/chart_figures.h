#pragma once

#include <string>
#include <vector>

#include "document.h"
#include "regional_settings.h"

// The figures of a chart as texts: an amount is grouped as the region does it and has its minus sign in front; from
// 1E+15 on it is written as in the reports.
namespace ledgix::chart {

// An amount with a fixed number of decimals, at most two.
std::string FigureText(double amount, int decimals, const runtime::RegionalSettings& region);

struct Table {
    std::vector<std::string> columns;             // the series
    std::vector<std::string> rows;                // "Year 0", ...
    std::vector<std::vector<std::string>> cells;  // by row
};

// Amounts have two decimals if any of them needs one, and none otherwise.
Table ToTable(const zq::Chart& chart, const runtime::RegionalSettings& region);

// Lines of cells with tabs between them, headings included, as spreadsheets take them.
std::string ToTabbed(const Table& table);

// The range of each series, in a sentence of its own.
std::string Describe(const zq::Chart& chart, const runtime::RegionalSettings& region);

}  // namespace ledgix::chart
