#include "outlook.h"

#include "rounding.h"

namespace ledgix::model {

namespace {

using runtime::CheckOverflow;
using runtime::Round;

// A value one year on, in whole dollars.
double Grown(double value, double percent) {
    return CheckOverflow(Round(value * (1 + percent / 100), 0));
}

double CashBeforeTax(const YearRecord& year) {
    return CheckOverflow(year[YearValue::kPurchaseCosts] + year[YearValue::kPurchasePrice] +
                         year[YearValue::kFinancing] + year[YearValue::kIncome] + year[YearValue::kExpenses] +
                         year[YearValue::kInterest] + year[YearValue::kPrincipal]);
}

void FillPurchase(YearRecord& year, const clsProperty& property) {
    const double mortgage = property.MortgageValue();
    year[YearValue::kPurchasePrice] = 0 - property.PurchasePrice;
    year[YearValue::kPurchaseCosts] = 0 - property.PurchaseCosts;
    year[YearValue::kFinancing] = mortgage;
    year[YearValue::kCashBeforeTax] = CashBeforeTax(year);
    year[YearValue::kHouseValueLeft] = property.HouseValue;
    year[YearValue::kChattelValueLeft] = property.ChattelValue;
    year[YearValue::kPropertyValue] = property.PurchasePrice;
    year[YearValue::kMortgageBalance] = mortgage;
}

void FillIncomeAndExpenses(YearRecord& year, const YearRecord& before, bool first, const clsProperty& property) {
    year[YearValue::kIncome] = first ? property.RentIncome : Grown(before[YearValue::kIncome], property.InflationRate);
    year[YearValue::kExpenses] =
        first ? 0 - property.RunningCosts() : Grown(before[YearValue::kExpenses], property.InflationRate);
    year[YearValue::kCashBeforeTax] = CashBeforeTax(year);
}

void FillTax(YearRecord& year, const YearRecord& before, const clsProperty& property, double salary,
             const IncomeTaxFunction& tax) {
    const double chattels = Round(property.ChattelDepn / 100 * before[YearValue::kChattelValueLeft], 0);
    const double house = Round(property.HouseDepn / 100 * before[YearValue::kHouseValueLeft], 0);
    year[YearValue::kChattelDepreciation] = CheckOverflow(chattels);
    year[YearValue::kHouseDepreciation] = CheckOverflow(house);
    year[YearValue::kTaxableResult] = CheckOverflow(year[YearValue::kCashBeforeTax] - chattels - house);
    year[YearValue::kTaxRefund] = tax(salary) - tax(salary + year[YearValue::kTaxableResult]);
    year[YearValue::kHouseValueLeft] = before[YearValue::kHouseValueLeft] - house;
    year[YearValue::kChattelValueLeft] = before[YearValue::kChattelValueLeft] - chattels;
    year[YearValue::kCashAfterTax] = CheckOverflow(year[YearValue::kTaxRefund] + year[YearValue::kCashBeforeTax]);
}

void FillValues(YearRecord& year, const YearRecord& before, const clsProperty& property) {
    year[YearValue::kPropertyValue] = Grown(before[YearValue::kPropertyValue], property.PriceIncreases);
    year[YearValue::kMortgageBalance] =
        CheckOverflow(before[YearValue::kMortgageBalance] + year[YearValue::kPrincipal]);
}

void FillReturns(Outlook& outlook, double deposit) {
    if (deposit == 0)
        return;
    double cash = 0;
    for (std::size_t y = 0; y <= kLastReportYear; ++y) {
        const YearRecord& year = outlook.records[y];
        cash += year[YearValue::kCashAfterTax];
        const double worth = cash + year[YearValue::kPropertyValue] - year[YearValue::kMortgageBalance];
        outlook.returns[y] = Round(runtime::Divide(worth, deposit), 2);
    }
}

}  // namespace

Outlook ComputeOutlook(clsProperty& property, const clsProfile& profile, const IncomeTaxFunction& tax) {
    property.records = {};
    property.MortgageCost();
    FillPurchase(property.records[0], property);
    for (std::size_t y = 1; y <= kLastYear; ++y) {
        YearRecord& year = property.records[y];
        const YearRecord& before = property.records[y - 1];
        FillIncomeAndExpenses(year, before, y == 1, property);
        FillTax(year, before, property, profile.IncSalary, tax);
        FillValues(year, before, property);
    }
    Outlook outlook{property.records, {}};
    FillReturns(outlook, property.DepositValue);
    return outlook;
}

}  // namespace ledgix::model
