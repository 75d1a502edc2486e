#include "tax_module.h"

#include <cmath>

#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "rounding.h"

namespace ledgix::model {

namespace {

double BracketTax(double rate, double slice) {
    return runtime::CheckOverflow(runtime::Round(rate / 100 * slice, 0));
}

void OpenTaxRates(store::ClosingRecordset& rows, std::string sql) {
    store::DataCreateSet(rows.get(), sql, dao::kOpenDynaset, dao::kDenyWrite + dao::kDenyRead);
}

}  // namespace

double IncomeTax(double income, const TaxTable& table) {
    const double amount = std::abs(income);
    double tax = 0;
    std::int32_t previous = 0;
    for (const TaxBracket& bracket : table.bounded) {
        if (amount > previous)
            tax += BracketTax(bracket.rate, (amount <= bracket.upper ? amount : bracket.upper) - previous);
        previous = runtime::ToInt32(bracket.upper);
    }
    if (amount > previous && table.top_rate)
        tax += BracketTax(*table.top_rate, amount - previous);
    return income < 0 ? 0 - tax : tax;
}

TaxTable LoadTaxTable() {
    TaxTable table;
    {
        store::ClosingRecordset rows;
        OpenTaxRates(rows, "select * from tax_rates where upper <> 0 order by upper");
        for (; !store::DataEOF(rows.get()); store::DataMoveNext(rows.get()))
            table.bounded.push_back({runtime::ToDouble(rows["upper"]), runtime::ToDouble(rows["rate"])});
    }
    store::ClosingRecordset top;
    OpenTaxRates(top, "select * from tax_rates where upper = 0");
    if (!store::DataIsEmpty(top.get()))
        table.top_rate = runtime::ToDouble(top["rate"]);
    return table;
}

double CalculateIncomeTax(double Income) {
    return IncomeTax(Income, LoadTaxTable());
}

}  // namespace ledgix::model
