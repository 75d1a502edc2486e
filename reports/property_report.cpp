#include "property_report.h"

#include <cmath>
#include <string>

#include "conversions.h"
#include "purchase_analysis.h"
#include "report_pieces.h"
#include "rounding.h"
#include "tax_module.h"
#include "text.h"

namespace ledgix::reports {

namespace {

using model::FirstYear;
using runtime::Divide;

// One run of the report: its writer, its records and the figures that they give.
class PropertyReport {
public:
    PropertyReport(clsReport& report, model::clsProperty& property, const model::clsProfile& profile)
        : report_(report),
          property_(property),
          profile_(profile),
          year_(model::AnalyseFirstYear(property, profile, model::CalculateIncomeTax)) {}

    void Print() {
        PrintHeader();
        PrintNewProperty();
        PrintTaxEffect();
        PrintIncomeAndExpenses();
        PrintAssetsAndLiabilities();
        PrintRatios();
        PrintDebtService();
    }

private:
    void PrintHeader() {
        FillHeader(report_, profile_);
        zq::Band& header = report_.objReport().band("Header");
        header.field("Title").SetText("Profile Property Analysis");
        header.field("Property").SetText("Property : " + property_.PropertyName);
        report_.objReport().PrintBand("Header");
    }

    void PrintRow(std::string_view caption, double value) { PrintTableRow(report_, caption, PlainNumber(value)); }

    // A paragraph and the empty line behind it.
    void PrintParagraph(const std::string& memo) {
        report_.PrintMemo(memo);
        PrintBlank(report_);
    }

    void PrintNewProperty() {
        report_.PrintHeading("New Property");
        PrintRow("Yearly Income", property_.RentIncome);
        PrintRow("Yearly Expenses", property_.Fees + property_.Repairs + property_.Rates + property_.Insurance +
                                        property_.OtherCosts + year_.MC);
        PrintRow("Yearly Surplus/Deficit (before tax)", property_.RentIncome - property_.Repairs - property_.Fees -
                                                            property_.Rates - property_.Insurance -
                                                            property_.OtherCosts - year_.MC);
        PrintBlank(report_);
        PrintParagraph("Included in your new expenses is " + PlainNumber(year_.MC) +
                       " in additional mortgage costs per year calculated using a mortgage value of " +
                       PlainNumber(property_.MortgageValue()) + ", at " + runtime::ToText(property_.MortgageRate) +
                       "% per year for " + runtime::ToText(std::int32_t{property_.MortgageTerm}) + " years." +
                       "  This equates to mortgage expenses of " + RoundedNumber(year_.MC / 12, 0) + " per month or " +
                       RoundedNumber(year_.MC / 52, 0) + " per week.");
    }

    void PrintTaxEffect() {
        PrintRow("Depreciation on House", -year_.DH);
        PrintRow("Depreciation on Chattels", -year_.DC);
        PrintRow("Taxable Income/Expense", year_.PT);
        PrintRow("Tax Refund", year_.R);
        PrintRow("Yearly Surplus/Deficit (after tax)", year_.SP);
        PrintBlank(report_);
        PrintParagraph("After claiming total tax deductable depreciation of " + PlainNumber(year_.DH + year_.DC) +
                       " your taxable income/expense would be " + PlainNumber(year_.PT) +
                       "  After claiming your tax refund of " + PlainNumber(year_.R) + " you would have a " +
                       (year_.SP > 0 ? " surplus of " : " deficit of ") + PlainNumber(year_.SP));
    }

    void PrintIncomeAndExpenses() {
        report_.PrintHeading("Income vs Expenses");
        report_.objReport().PrintBand("BeforeAfter");
        const double net_income = profile_.TotalIncome() - year_.TB;
        PrintTableRow(report_, "Total Income (after tax)", net_income, net_income + property_.RentIncome + year_.R);
        PrintTableRow(report_, "Total Expenses", profile_.TotalExpenses(),
                      profile_.TotalExpenses() + property_.RunningCosts() + year_.MC);
        PrintBlank(report_);
        PrintTableRow(report_, "Yearly Surplus", year_.SB, year_.SA);
        PrintBlank(report_);
        PrintChangeMemo();
        PrintRentMemo();
    }

    void PrintChangeMemo() {
        const double change = year_.SB - year_.SA;
        PrintParagraph(std::string("The means you will be ") +
                       (year_.SB <= year_.SA ? "better off by " : "worse off by ") + PlainNumber(std::abs(change)) +
                       " per year, or " + RoundedNumber(std::abs(change / 12), 0) + " per month or " +
                       RoundedNumber(std::abs(change / 52), 0) + " per week." +
                       "  It is important to remember that this is the value for the first year only.  Over time the "
                       "value of the rental income should increase and depreciation will decrease.  See the 'Long Term "
                       "Outlook' report for long term income/expenses.");
    }

    void PrintRentMemo() {
        const double rent = property_.RentIncome;
        std::string memo = "Your rental income of " + PlainNumber(rent);
        if (rent > year_.MC)
            memo += " covers your mortgage costs with " + PlainNumber(rent - year_.MC) +
                    " to spare per year to put towards other expenses.";
        else
            memo += " does not covers your mortgage costs with " + PlainNumber(year_.MC - rent) +
                    " per year required from your own pocket to cover the mortgage.";
        PrintParagraph(memo);
    }

    // The purchase costs are left out of the liabilities on purpose.
    void PrintAssetsAndLiabilities() {
        const double assets = profile_.TotalAssets();
        const double liabilities = profile_.TotalLiabilities();
        report_.PrintHeading("Assets vs Liabilities");
        report_.objReport().PrintBand("BeforeAfter");
        PrintTableRow(report_, "Total Assets", assets, assets + property_.PurchasePrice);
        PrintTableRow(report_, "Total Liabilities", liabilities,
                      liabilities + property_.PurchasePrice - property_.DepositValue);
        PrintBlank(report_);
        PrintParagraph("Your total assets less your total liabilities (i.e your net worth) would be " +
                       RoundedNumber(assets - liabilities + property_.DepositValue, 0) +
                       std::string(runtime::kLineBreak));
    }

    void PrintRatios() {
        const double assets = profile_.TotalAssets();
        const double assets_after = assets + property_.PurchasePrice;
        if (assets == 0 || assets_after == 0)
            return;
        const double worth = assets - profile_.TotalLiabilities();
        const double before = runtime::Round(Divide(worth, assets), 3);
        const double after = runtime::Round(Divide(worth + property_.DepositValue, assets_after), 3);
        report_.PrintMemo("Your debt/equity ratio would change from " + PlainNumber(before * 100) + "% to " +
                          PlainNumber(after * 100) + "%  ");
        PrintParagraph("Your Loan to Value Ratio or LVR changes from " + PlainNumber(100 - before * 100) + "% to " +
                       PlainNumber(100 - after * 100) + "%.  " +
                       "Lending institutions often look at your LVR after the purchase when determining if they should "
                       "lend to you or not.");
    }

    // After the purchase the profile's own rent counts in full, the property's rent at 0.8.
    void PrintDebtService() {
        const double rent = profile_.IncRentalIncome;
        const double before = ServicingIncome(profile_, rent * 0.8);
        if (before == 0)
            return;
        const double after = ServicingIncome(profile_, property_.RentIncome * 0.8 + rent);
        const double debts = DebtService(profile_);
        std::string memo = "Your Debt Service Ratio (DSR) would change from " +
                           RoundedNumber(Divide(debts, before) * 100, 2) + "% to ";
        if (after == 0)
            memo += "0%";
        else
            memo += RoundedNumber(Divide(debts + year_.MC, after) * 100, 2) + "%.  ";
        PrintParagraph(memo + "This indicated your ability to repay loans.  Lower is better.");
    }

    clsReport& report_;
    model::clsProperty& property_;
    const model::clsProfile& profile_;
    FirstYear year_;
};

}  // namespace

void PrintPropertyReport(clsReport& report, model::clsProperty& property, const model::clsProfile& profile) {
    PropertyReport(report, property, profile).Print();
}

}  // namespace ledgix::reports
