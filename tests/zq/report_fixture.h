#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "fixed_clock.h"
#include "regional_settings.h"
#include "scoped_region.h"
#include "temporary_folder.h"
#include "zq_reports.h"

namespace ledgix::test {

// The lines that a template begins with: portrait, 20 mm of margin all around.
inline const std::string kTemplateHead = "ledgix report 1\npage portrait\nmargins 20 20 20 20\n";

inline constexpr double kPointsPerMm = 72.0 / 25.4;

// English (United States) with the given paper.
runtime::RegionalSettings RegionWithPaper(runtime::Paper paper);

// The product's own template or picture.
std::string ProductFile(const std::string& name);

// Prints the bands of a reference case as the reports do.
void PrintCase(zq::zqReports& engine, const nlohmann::json& bands);

// Prints a text of any length as a run of "freetext" bands.
void PrintMemo(zq::zqReports& engine, std::string text);

// An engine on A4 paper, on 14 February 2026, and templates given as text.
class ReportFixture : public testing::Test {
protected:
    // Opens kTemplateHead followed by `bands`.
    void Open(const std::string& bands);
    void Print(std::string_view band, std::string_view field, const std::string& text);
    const zq::Document& Show();
    // The text that is drawn with this content, on the first page that has it.
    zq::PrintedText Find(const std::string& text) const;
    // The texts of one page, footer included, joined by "|".
    std::string PageTexts(std::size_t page) const;

    ScopedRegion region_{RegionWithPaper(runtime::Paper::kA4)};
    FixedClock clock_{{2026, 2, 14, 20, 15, 30}};
    TemporaryFolder folder_;
    zq::zqReports engine_;
};

}  // namespace ledgix::test
