#include "profile_report.h"

#include <string>

#include "report_pieces.h"
#include "rounding.h"
#include "tax_module.h"
#include "text.h"

namespace ledgix::reports {

namespace {

using runtime::Divide;
using runtime::kLineBreak;

// The two tests differ at the balanced point on purpose: it is called a deficit and praised all the same.
std::string IncomeMemo(double net_income, double expenses) {
    const double balance = net_income - expenses;
    std::string memo = "Your total income and total expenses means you have a ";
    memo += net_income <= expenses ? "deficit" : "surplus";
    memo += " each year of " + PlainNumber(balance) + ".";
    memo += " This equates to " + RoundedNumber(balance / 52, 0) + " per week and " + RoundedNumber(balance / 12, 0) +
            " per month.";
    memo += kLineBreak;
    if (net_income < expenses)
        memo +=
            "The fact that your expenses exceeds your income is not a good start.  You will need to look at increasing "
            "your income or reducing your expenses if you want to get ahead.";
    else
        memo +=
            "The fact that your income exceeds your expenses is a good position to be in.  If you can increase your "
            "income or reduce your expenses, that will make the situation even better.";
    return memo;
}

std::string TimesAsManySentence(double assets, double liabilities) {
    if (assets > liabilities) {
        if (liabilities == 0)
            return {};
        return "This means you have " + RoundedNumber(Divide(assets, liabilities), 2) +
               " times as many assets as you have liabilities.";
    }
    if (assets == 0)
        return {};
    return "This means you have " + RoundedNumber(Divide(liabilities, assets), 2) +
           " times as many liabilities as you have assets.";
}

// The figure that the text calls a debt/equity ratio is the owner's share of the assets.
std::string EquityParagraph(double assets, double liabilities) {
    const double equity = runtime::Round(Divide(assets - liabilities, assets), 3);
    const std::string own = PlainNumber(equity * 100);
    const std::string lent = PlainNumber(100 - equity * 100);
    return std::string(kLineBreak) + "You have a debt/equity ratio of " + own + "%.  This means that you 'own' " + own +
           "% of your assets, and the lending institutions 'own' the other " + lent +
           "%.  This means you Loan to Value Ratio or LVR is " + lent + "%.";
}

std::string ServiceParagraph(const model::clsProfile& profile) {
    const double income = ServicingIncome(profile, profile.IncRentalIncome * 0.8);
    if (income == 0)
        return {};
    return std::string(kLineBreak) + std::string(kLineBreak) + "Your Debt Service Ratio (DSR) is currently " +
           RoundedNumber(Divide(DebtService(profile), income) * 100, 2) +
           "%.  This indicated your ability to repay loans.  Lower is better.";
}

std::string WorthMemo(const model::clsProfile& profile) {
    const double assets = profile.TotalAssets();
    const double liabilities = profile.TotalLiabilities();
    std::string memo = "Your total assets less your total liabilities (i.e your net worth) is " +
                       RoundedNumber(assets - liabilities, 0);
    memo += kLineBreak;
    memo += TimesAsManySentence(assets, liabilities);
    memo += kLineBreak;
    if (assets != 0)
        memo += EquityParagraph(assets, liabilities);
    return memo + ServiceParagraph(profile);
}

}  // namespace

void PrintProfileReport(clsReport& report, const model::clsProfile& profile) {
    const double tax = model::CalculateIncomeTax(profile.IncSalary);
    const double net_income = profile.TotalIncome() - tax;

    FillHeader(report, profile);
    report.objReport().PrintBand("Header");
    report.PrintHeading("Income vs Expenses");
    PrintTableRow(report, "Total Income (after income tax)", CurrencyText(net_income));
    PrintTableRow(report, "Total Expenses", CurrencyText(profile.TotalExpenses()));
    PrintBlank(report);
    report.PrintMemo(IncomeMemo(net_income, profile.TotalExpenses()));
    report.PrintMemo("Tax on your salary/wages was calculated at " + PlainNumber(tax));
    PrintBlank(report);
    report.PrintHeading("Assets vs Liabilities");
    PrintTableRow(report, "Total Assets", CurrencyText(profile.TotalAssets()));
    PrintTableRow(report, "Total Liabilities", CurrencyText(profile.TotalLiabilities()));
    PrintBlank(report);
    report.PrintMemo(WorthMemo(profile));
}

}  // namespace ledgix::reports
