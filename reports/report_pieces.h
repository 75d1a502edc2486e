#pragma once

#include <string>
#include <string_view>

#include "cls_profile.h"
#include "cls_report.h"

// What the report bodies share.
namespace ledgix::reports {

// A number in a sentence or a plain cell: rounded to 6 decimals, which takes away binary noise, no grouping, no
// currency sign, "0" for negative zero.
std::string PlainNumber(double value);

// Rounded to `places` decimals, then plain.
std::string RoundedNumber(double value, int places);

// An amount as the region writes currency.
std::string CurrencyText(double amount);

// Sets the fields that every report's header has. Printing it is left to the report.
void FillHeader(clsReport& report, const model::clsProfile& profile);

// A row of the table with a text in `before`, as it is.
void PrintTableRow(clsReport& report, std::string_view caption, std::string before);
// A row of two amounts of currency.
void PrintTableRow(clsReport& report, std::string_view caption, double before, double after);

void PrintBlank(clsReport& report);

// The yearly income, in dollars, that is taken to be free for paying debts: 30 % of what is not rent, and the rents as
// weighted by the caller.
double ServicingIncome(const model::clsProfile& profile, double weighted_rents);

// The profile's own payments on debts: mortgage, hire purchase and other loans.
double DebtService(const model::clsProfile& profile);

}  // namespace ledgix::reports
