#include "property_pages.h"

#include <cmath>

#include "conversions.h"
#include "frm_property.h"
#include "zq_text_box.h"

namespace ledgix::editors {

namespace {

using model::clsProperty;

constexpr PropertyRow kPurchase[]{
    {{"txtPurchasePrice", "Purchase Price", Unit::kMoney}, &frmProperty::txtPurchasePrice, &clsProperty::PurchasePrice},
    {{"txtPurchaseCosts", "Purchase Costs (e.g. legal and bank fees)", Unit::kMoney},
     &frmProperty::txtPurchaseCosts,
     &clsProperty::PurchaseCosts},
    {{"txtDepositValue", "Deposit Value", Unit::kMoney}, &frmProperty::txtDepositValue, &clsProperty::DepositValue},
    {{"txtMortgageRate", "Mortgage Rate", Unit::kPercentAYear},
     &frmProperty::txtMortgageRate,
     &clsProperty::MortgageRate},
    {{"txtMortgageTerm", "Mortgage Term (yrs)", Unit::kYears},
     &frmProperty::txtMortgageTerm,
     &clsProperty::MortgageTerm},
};

constexpr PropertyRow kDepreciation[]{
    {{"txtHouse", "House Value", Unit::kMoney}, &frmProperty::txtHouse, &clsProperty::HouseValue},
    {{"txtChattel", "Chattels Value", Unit::kMoney}, &frmProperty::txtChattel, &clsProperty::ChattelValue},
    {{"txtHouseDepn", "House Depreciation Rate", Unit::kPercentAYear},
     &frmProperty::txtHouseDepn,
     &clsProperty::HouseDepn},
    {{"txtChattelDepn", "Chattel Depreciation Rate", Unit::kPercentAYear},
     &frmProperty::txtChattelDepn,
     &clsProperty::ChattelDepn},
};

constexpr PropertyRow kIncome[]{
    {{"txtIncRental", "Rental Income", Unit::kMoneyAYear}, &frmProperty::txtIncRental, &clsProperty::RentIncome},
};

constexpr PropertyRow kExpenses[]{
    {{"txtExpRates", "Rates", Unit::kMoneyAYear}, &frmProperty::txtExpRates, &clsProperty::Rates},
    {{"txtExpInsurance", "Insurance", Unit::kMoneyAYear}, &frmProperty::txtExpInsurance, &clsProperty::Insurance},
    {{"txtExpRepair", "Repairs/Maintenance", Unit::kMoneyAYear}, &frmProperty::txtExpRepair, &clsProperty::Repairs},
    {{"txtExpFee", "Letting Fees", Unit::kMoneyAYear}, &frmProperty::txtExpFee, &clsProperty::Fees},
    {{"txtExpOther", "Other New Expenses", Unit::kMoneyAYear}, &frmProperty::txtExpOther, &clsProperty::OtherCosts},
};

constexpr PropertyRow kInflation[]{
    {{"txtInflation", "Expected inflation rate", Unit::kPercentAYear},
     &frmProperty::txtInflation,
     &clsProperty::InflationRate},
    {{"txtPriceIncreases", "Property Price Increase", Unit::kPercentAYear},
     &frmProperty::txtPriceIncreases,
     &clsProperty::PriceIncreases},
};

constexpr PropertyFrame kFrames[]{{"Frame2", "Income", kIncome, 1},
                                  {"Frame3", "Expenses (excl mortgage)", kExpenses, 1},
                                  {"Frame1", "Purchase Details", kPurchase, 0, true},
                                  {"Frame4", "Inflation", kInflation, 1},
                                  {"Frame5", "Depreciation", kDepreciation, 0}};

void Take(double& value, double entered) {
    value = entered;
}
void Take(float& value, double entered) {
    value = static_cast<float>(entered);
}
void Take(std::int16_t& value, double entered) {
    value = runtime::ToInt16(entered);
}

void Show(controls::zqTextBox& box, double value) {
    ShowAmount(box, value);
}
// In the digits of a single, not in those of the double next to it.
void Show(controls::zqTextBox& box, float value) {
    box.setText(ToScreen(runtime::ToText(std::isfinite(value) ? value : 0.0F)));
}
void Show(controls::zqTextBox& box, std::int16_t value) {
    box.setText(ToScreen(runtime::ToText(value)));
}

}  // namespace

std::span<const PropertyFrame> PropertyFrames() {
    return kFrames;
}

void ShowRow(const frmProperty& form, const PropertyRow& row, const clsProperty& property) {
    std::visit([&](auto value) { Show(*(form.*row.box), property.*value); }, row.value);
}

void TakeRow(const frmProperty& form, const PropertyRow& row, clsProperty& property) {
    std::visit([&](auto value) { Take(property.*value, (form.*row.box)->Value()); }, row.value);
}

}  // namespace ledgix::editors
