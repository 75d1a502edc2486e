#pragma once

#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "cls_report.h"
#include "household_builder.h"
#include "period_amounts.h"
#include "price_split.h"
#include "purchase_analysis.h"
#include "report_folder.h"
#include "report_pieces.h"
#include "rounding.h"
#include "scoped_region.h"
#include "text.h"
#include "worked_examples.h"

// The household of the help's examples in a database of its own, and what the program makes of it.
namespace ledgix::test {

enum class Record { kProfile, kProperty };

// Where a given figure is entered.
struct GivenField {
    Record record;
    const char* member;
};

inline const std::map<std::string, GivenField>& GivenFields() {
    constexpr Record kProfile = Record::kProfile;
    constexpr Record kProperty = Record::kProperty;
    static const std::map<std::string, GivenField> fields{
        {"Salary/Wages", {kProfile, "IncSalary"}},
        {"Rental Income (profile)", {kProfile, "IncRentalIncome"}},
        {"Interest Received", {kProfile, "IncInterestReceived"}},
        {"Dividends", {kProfile, "IncDividends"}},
        {"Other", {kProfile, "IncOtherIncome"}},
        {"General Living Expenses", {kProfile, "ExpGeneral"}},
        {"Power", {kProfile, "ExpPower"}},
        {"Rates (profile)", {kProfile, "ExpRates"}},
        {"Insurance (profile)", {kProfile, "ExpInsurance"}},
        {"Credit Cards", {kProfile, "ExpCreditCards"}},
        {"Hire Purchase", {kProfile, "ExpHP"}},
        {"Other Loans", {kProfile, "ExpOtherLoan"}},
        {"Other Expenses", {kProfile, "ExpOther"}},
        {"Mortgage Repayments", {kProfile, "ExpMortgage"}},
        {"Vehicle Expenses", {kProfile, "ExpVehicle"}},
        {"Rent/Board", {kProfile, "ExpRent"}},
        {"Family Home", {kProfile, "AssFamilyHome"}},
        {"Rental Properties", {kProfile, "AssRentalProperties"}},
        {"Shares/Investments", {kProfile, "AssShares"}},
        {"Vehicles", {kProfile, "AssVehicles"}},
        {"Cash", {kProfile, "AssCash"}},
        {"Other Assets", {kProfile, "AssOther"}},
        {"Familty Home Mortgage", {kProfile, "LibHomeMortgage"}},
        {"Rental Home Mortgages", {kProfile, "LibRentalMortgage"}},
        {"Loans", {kProfile, "LibLoans"}},
        {"Other Liabilities", {kProfile, "LibOther"}},
        {"Purchase Price", {kProperty, "PurchasePrice"}},
        {"Purchase Costs", {kProperty, "PurchaseCosts"}},
        {"Deposit Value", {kProperty, "DepositValue"}},
        {"Mortgage Rate", {kProperty, "MortgageRate"}},
        {"Mortgage Term", {kProperty, "MortgageTerm"}},
        {"Rental Income (property)", {kProperty, "RentIncome"}},
        {"Rates (property)", {kProperty, "Rates"}},
        {"Insurance (property)", {kProperty, "Insurance"}},
        {"Repairs/Maintenance", {kProperty, "Repairs"}},
        {"Letting Fees", {kProperty, "Fees"}},
        {"Other New Expenses", {kProperty, "OtherCosts"}},
        {"Expected inflation rate", {kProperty, "InflationRate"}},
        {"Property Price Increase", {kProperty, "PriceIncreases"}},
        {"House Depreciation Rate", {kProperty, "HouseDepn"}},
        {"Chattel Depreciation Rate", {kProperty, "ChattelDepn"}},
    };
    return fields;
}

// What a finished report says.
class ReportText {
public:
    void Read(const zq::Document& document) {
        for (const zq::PrintedBand& band : document.bands) {
            const std::string caption = Trimmed(Field(band, "caption"));
            if (runtime::EqualsIgnoringCase(band.name, "freetext"))
                memos_ += Field(band, "caption");
            if (!runtime::EqualsIgnoringCase(band.name, "table") && !runtime::EqualsIgnoringCase(band.name, "body"))
                continue;
            if (caption.empty())
                continue;
            captions_.push_back(caption);
            for (const zq::PrintedField& field : band.fields)
                cells_[caption + "/" + runtime::FoldCase(field.name)] = field.text;
        }
    }

    const std::vector<std::string>& captions() const { return captions_; }
    const std::string& memos() const { return memos_; }

    // The cell of a figure: "Income, year 2", "Total Assets, after", or the caption of a row with one value.
    std::optional<double> Cell(const std::string& name) const {
        std::smatch parts;
        static const std::regex pattern("(.*), (year \\d+|before|after)");
        const bool split = std::regex_match(name, parts, pattern);
        const std::string column = split ? std::regex_replace(parts[2].str(), std::regex(" "), "") : "before";
        const auto cell = cells_.find((split ? parts[1].str() : name) + "/" + column);
        if (cell == cells_.end())
            return std::nullopt;
        return cell->second.empty() ? 0 : NumberOf(cell->second);
    }

    // What stands at the group of a pattern in the paragraphs.
    std::optional<double> InMemo(const std::string& pattern) const {
        std::smatch found;
        if (!std::regex_search(memos_, found, std::regex(pattern)))
            return std::nullopt;
        return NumberOf(found[1].str());
    }

private:
    static std::string Field(const zq::PrintedBand& band, const std::string& name) {
        for (const zq::PrintedField& field : band.fields)
            if (runtime::EqualsIgnoringCase(field.name, name))
                return field.text;
        return {};
    }
    static std::string Trimmed(const std::string& text) {
        const auto first = text.find_first_not_of(' ');
        return first == std::string::npos ? std::string() : text.substr(first);
    }

    std::vector<std::string> captions_;
    std::string memos_;
    std::map<std::string, std::string> cells_;
};

// Month by month, without any closed formula.
struct Schedule {
    double interest[25]{};
    double paid_back[25]{};
    double owing[25]{};
    double left_at_the_end = 0;

    Schedule(double mortgage, double percent, int months, double payment) {
        const double rate = percent / 100 / 12;
        owing[0] = mortgage;
        double balance = mortgage;
        for (int month = 1; month <= months; ++month) {
            const double due = balance * rate;
            balance -= payment - due;
            if (month < 25) {
                interest[month] = due;
                paid_back[month] = payment - due;
                owing[month] = balance;
            }
        }
        left_at_the_end = balance;
    }
};

class ExampleHousehold {
public:
    explicit ExampleHousehold(const WorkedExamples& examples) : database_(Content(examples)) {
        profile.ProfileNumber = 1;
        profile.ReloadProfile();
        for (const reports::ReportKind kind :
             {reports::kProfileReport, reports::kAnalysisReport, reports::kOutlookReport}) {
            reports::clsReport report;
            report.Profile(profile);
            report.Property(property());
            report.ReportType(kind);
            report.PrintReport();
            texts_[kind].Read(report.objReport().document());
        }
    }

    model::clsProperty& property() { return profile.Property("P1-1"); }
    const ReportText& Text(reports::ReportKind kind) const { return texts_.at(kind); }

    model::clsProfile profile;

private:
    static std::vector<std::uint8_t> Content(const WorkedExamples& examples) {
        Json records[2] = {Json{{"ProfileName", "Example"}}, Json{{"PropertyName", "Example"},
                                                                  {"HouseValue", examples.Value("House Value")},
                                                                  {"ChattelValue", examples.Value("Chattels Value")}}};
        for (const auto& [name, field] : GivenFields())
            records[field.record == Record::kProperty][field.member] = examples.Value(name);
        const Json brackets{
            {{"upper", 38000}, {"rate", 19.5}}, {{"upper", 60000}, {"rate", 33}}, {{"upper", 0}, {"rate", 39}}};
        return CaseContent({{"profile", records[0]}, {"property", records[1]}, {"TaxRates", brackets}});
    }

    ReportFolder folder_;
    ScopedRegion region_;
    InstalledDatabase database_;
    std::map<int, ReportText> texts_;
};

}  // namespace ledgix::test
