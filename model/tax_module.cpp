#include "tax_module.h"

#include <cmath>
#include <memory>
#include <string>

#include "conversions.h"
#include "dao_constants.h"
#include "dao_transaction.h"
#include "database.h"
#include "error_log.h"
#include "resume_next.h"
#include "rounding.h"

namespace ledgix::model {

bool TaxRatesSeeded = false;

namespace {

double BracketTax(double rate, double slice) {
    return runtime::CheckOverflow(runtime::Round(rate / 100 * slice, 0));
}

void OpenTaxRates(store::ClosingRecordset& rows, std::string sql) {
    store::DataCreateSet(rows.get(), sql, dao::kOpenDynaset, dao::kDenyWrite + dao::kDenyRead);
}

void InsertDefaultTaxRates() {
    const std::unique_ptr<dao::Transaction> change = store::BeginChange();
    bool inserted = true;
    for (const char* statement :
         {"insert into tax_rates(upper, rate) values(38000,19.5)",
          "insert into tax_rates(upper, rate) values(60000,33)", "insert into tax_rates(upper, rate) values(0,39)"}) {
        std::string sql = statement;
        inserted = store::ExecuteSQL(sql) && inserted;
    }
    if (!inserted)
        return;
    const auto commit = [&] {
        if (change)
            change->Commit();
    };
    TaxRatesSeeded = runtime::ResumeNext(
        commit, [](const runtime::RuntimeError& error) { services::DatabaseErrorHandler("Execute SQL", error); });
}

}  // namespace

void CheckDefaultTaxRates() {
    store::ClosingRecordset rows;
    OpenTaxRates(rows, "select * from tax_rates order by upper");
    // One that can't be read may hold rows.
    if (store::gDatabase && !rows.get())
        return;
    if (!store::DataIsEmpty(rows.get()))
        return;
    store::DataClose(rows.get());
    InsertDefaultTaxRates();
}

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
