#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "cases.h"
#include "cls_report.h"
#include "fixed_clock.h"
#include "household_builder.h"
#include "message_recorder.h"
#include "report_folder.h"
#include "scoped_region.h"
#include "text.h"

// Reports of households that ask the most of a page.
namespace ledgix::test {

enum class Figures {
    kHuge,    // the longest names, the highest amounts
    kInDebt,  // the same without assets to speak of, and with a loss every year
    kShort,   // names of one letter, small amounts
};
enum class Memo { kNone, kProse, kOneWord, kManyLines, kManyLetters };

// What a test prints: a report, and a memo of 20,000 characters behind it.
struct TorturePage {
    reports::ReportKind kind;
    Figures figures;
    Memo memo;
    runtime::Paper paper;
};

inline std::string NameOf(const TorturePage& page) {
    constexpr const char* kKinds[] = {"Profile", "Analysis", "Outlook"};
    constexpr const char* kFigures[] = {"Huge", "InDebt", "Short"};
    constexpr const char* kMemos[] = {"WithoutMemo", "Prose", "OneWord", "ManyLines", "ManyLetters"};
    std::string name = kKinds[page.kind];
    name.append(kFigures[static_cast<int>(page.figures)]).append(kMemos[static_cast<int>(page.memo)]);
    return name + (page.paper == runtime::Paper::kA4 ? "OnA4" : "OnLetter");
}

inline void PrintTo(const TorturePage& page, std::ostream* out) {
    *out << NameOf(page);
}

inline constexpr std::size_t kMemoCharacters = 20000;

inline std::string MemoText(Memo memo) {
    std::string text;
    const auto fill = [&](const auto& next) {
        for (int i = 0; text.size() < kMemoCharacters; ++i)
            text += next(i);
        text.resize(kMemoCharacters);
    };
    switch (memo) {
        case Memo::kNone:
            break;
        case Memo::kProse:
            fill([](int i) {
                return "Sentence " + std::to_string(i) + " weighs what a house costs." + (i % 9 ? "  " : "\r\n");
            });
            break;
        case Memo::kOneWord:
            fill([](int) { return "W"; });
            break;
        case Memo::kManyLines:
            fill([](int i) { return std::to_string(i) + (i % 3 ? "\r\n" : "\r\n\r\n"); });
            break;
        case Memo::kManyLetters:
            for (std::size_t i = 0; i < kMemoCharacters; ++i)
                text += i % 11 == 10 ? " " : i % 2 ? "\xC3\x9F" : "\xE2\x82\xAC";
            break;
    }
    return text;
}

inline constexpr double kHighest = 999999999999.99;

inline Json ProfileFields(Figures figures) {
    Json fields{{"ProfileName", figures == Figures::kShort ? "T" : std::string(50, 'W')}};
    const double amount = figures == Figures::kShort ? 1 : kHighest;
    const auto set = [&](const auto& amounts, double value) {
        for (const auto& entry : amounts)
            fields[std::string(entry.column)] = value;
    };
    set(model::kIncomeAmounts, amount);
    set(model::kExpenseAmounts, amount);
    set(model::kAssetAmounts, figures == Figures::kInDebt ? 123456789012.34 : amount);
    set(model::kLiabilityAmounts, amount);
    return fields;
}

inline Json PropertyFields(Figures figures) {
    if (figures == Figures::kShort)
        return {{"PropertyName", "U"}, {"PurchasePrice", 3}, {"DepositValue", 1}, {"RentIncome", 1}};
    const bool in_debt = figures == Figures::kInDebt;
    return {{"PropertyName", std::string(50, 'W')},
            {"PurchasePrice", kHighest},
            {"PurchaseCosts", kHighest},
            {"DepositValue", 123456789012.34},
            {"MortgageRate", 99.9999},
            {"MortgageTerm", 30},
            {"RentIncome", in_debt ? 0.01 : kHighest},
            {"Rates", kHighest},
            {"Insurance", kHighest},
            {"Repairs", kHighest},
            {"Fees", kHighest},
            {"OtherCosts", kHighest},
            {"InflationRate", 9.9999},
            {"HouseValue", kHighest},
            {"ChattelValue", kHighest},
            {"HouseDepn", 4.4444},
            {"ChattelDepn", 15.5555},
            {"PriceIncreases", in_debt ? -9.9999 : 9.9999}};
}

// Runs the report by its own writer, as long as the object lives.
class TortureReport {
public:
    explicit TortureReport(const TorturePage& page)
        : region_(RegionOf(page.paper)), database_(ContentOf(page.figures)) {
        profile_.ProfileNumber = 1;
        profile_.ReloadProfile();
        report_.Profile(profile_);
        report_.Property(profile_.Property("P1-1"));
        report_.ReportType(page.kind);
        report_.PrintReport();
        EXPECT_TRUE(report_.Printed());
        EXPECT_EQ(messages_.messages(), std::vector<MessageRecorder::Message>());
        report_.PrintMemo(MemoText(page.memo));
        report_.objReport().Show();
    }

    const zq::Document& document() const { return report_.objReport().document(); }
    const model::clsProfile& profile() const { return profile_; }
    std::string folder() const { return folder_.path(); }

protected:
    reports::clsReport report_;

private:
    static runtime::RegionalSettings RegionOf(runtime::Paper paper) {
        runtime::RegionalSettings region = runtime::UnitedStates();
        region.paper = paper;
        return region;
    }
    static std::vector<std::uint8_t> ContentOf(Figures figures) {
        return HouseholdBuilder()
            .AddProfile(1, ProfileFields(figures))
            .AddProperty(1, 1, PropertyFields(figures))
            .AddTaxRates(Json::parse(R"([{"upper": 38000, "rate": 19.5}, {"upper": 0, "rate": 39}])"))
            .Finish();
    }

    ReportFolder folder_;
    ScopedRegion region_;
    FixedClock clock_{{2026, 11, 22, 9, 5, 3}};
    MessageRecorder messages_;
    InstalledDatabase database_;
    model::clsProfile profile_;
};

// The outlook with its longest caption and one figure in all of its rows.
class FullOutlookReport : public TortureReport {
public:
    FullOutlookReport(runtime::Paper paper, const std::string& figure)
        : TortureReport({reports::kOutlookReport, Figures::kHuge, Memo::kNone, paper}) {
        zq::zqReports& engine = report_.objReport();
        EXPECT_TRUE(engine.OpenTemplate(folder() + "/profile10.rdn"));
        zq::Band& header = engine.band("Header");
        header.field("Profile").SetText("Profile : " + profile().ProfileName);
        header.field("Property").SetText("Property : " + profile().ProfileName);
        header.field("reportlogo").LoadPicture(folder() + "/reportlogo.bmp");
        engine.PrintBand("Header");
        zq::Band& row = engine.band("Body");
        for (int i = 0; i < kRows; ++i) {
            for (const zq::Field& field : row.fields())
                row.field(field.name()).SetText(field.name() == "caption" ? "Internal Rate of Return (IRR)" : figure);
            engine.PrintBand("Body");
        }
        engine.Show();
    }

private:
    static constexpr int kRows = 20;
};

}  // namespace ledgix::test
