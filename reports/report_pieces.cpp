#include "report_pieces.h"

#include <utility>

#include "application_folder.h"
#include "conversions.h"
#include "formats.h"
#include "rounding.h"

namespace ledgix::reports {

std::string PlainNumber(double value) {
    return runtime::ToText(runtime::Round(runtime::CheckOverflow(value), 6));
}

std::string RoundedNumber(double value, int places) {
    return PlainNumber(runtime::Round(value, places));
}

std::string CurrencyText(double amount) {
    return runtime::FormatCurrency(runtime::CheckOverflow(amount), runtime::Region());
}

void FillHeader(clsReport& report, const model::clsProfile& profile) {
    zq::Band& header = report.objReport().band("Header");
    header.field("Profile").SetText("Profile : " + profile.ProfileName);
    header.field("reportlogo").LoadPicture(runtime::ApplicationFile("reportlogo.bmp"));
}

void PrintTableRow(clsReport& report, std::string_view caption, std::string before) {
    zq::Band& table = report.objReport().band("table");
    table.field("Caption").SetText(std::string(caption));
    table.field("before").SetText(std::move(before));
    report.objReport().PrintBand("Table");
}

void PrintTableRow(clsReport& report, std::string_view caption, double before, double after) {
    report.objReport().band("table").field("after").SetText(CurrencyText(after));
    PrintTableRow(report, caption, CurrencyText(before));
}

void PrintBlank(clsReport& report) {
    report.objReport().PrintBand("Blank");
}

double ServicingIncome(const model::clsProfile& profile, double weighted_rents) {
    return (profile.TotalIncome() - profile.IncRentalIncome) * 0.3 + weighted_rents;
}

double DebtService(const model::clsProfile& profile) {
    return profile.ExpMortgage + profile.ExpHP + profile.ExpOtherLoan;
}

}  // namespace ledgix::reports
