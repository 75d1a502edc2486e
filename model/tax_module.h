#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace ledgix::model {

// Income up to `upper` dollars, above the bound of the bracket before, is taxed at `rate` percent.
struct TaxBracket {
    double upper = 0;
    double rate = 0;
};

struct TaxTable {
    std::vector<TaxBracket> bounded;  // ascending by upper
    std::optional<double> top_rate;   // percent, on income above the highest bound; none: no tax there
};

// Income tax in dollars on a year's income in dollars; the negative tax of its absolute value for a negative income.
// Each bracket's share is rounded to whole dollars, halves to even, before adding.
// With 19.5 % to 38,000, 33 % to 60,000 and 39 % above: 70,000 -> 18,570; 38,000 -> 7,410; -70,000 -> -18,570.
// Errors: 6 when a bound is beyond 32 bits or a share beyond a double.
double IncomeTax(double income, const TaxTable& table);

// The brackets of the table Tax_Rates. Of several top rows (upper = 0) the first counts. Error 94 for a Null rate.
TaxTable LoadTaxTable();

// Set when CheckDefaultTaxRates has filled the table, until the user has been asked to look at it.
extern bool TaxRatesSeeded;

// Fills an empty Tax_Rates with three brackets: 19.5 % to 38,000, 33 % to 60,000 and 39 % above. All or none.
void CheckDefaultTaxRates();

// IncomeTax with the brackets as they are in the database now.
double CalculateIncomeTax(double Income);

// How a calculation gets its income tax: CalculateIncomeTax, or a fixed table in tests.
using IncomeTaxFunction = std::function<double(double)>;

}  // namespace ledgix::model
