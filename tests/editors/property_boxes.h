#pragma once

// What is stated about the boxes of the property editor, in the order of its page.
namespace ledgix::test {

struct BoxFacts {
    const char* name;
    const char* frame;
    const char* caption;
    int decimals;
    const char* unit;
    bool calculator;
    const char* column;
};

inline constexpr BoxFacts kBoxes[]{
    {"txtPurchasePrice", "Purchase Details", "Purchase Price", 2, "$", false, "PurchasePrice"},
    {"txtPurchaseCosts", "Purchase Details", "Purchase Costs (e.g. legal and bank fees)", 2, "$", false,
     "PurchaseCosts"},
    {"txtDepositValue", "Purchase Details", "Deposit Value", 2, "$", false, "DepositValue"},
    {"txtMortgageRate", "Purchase Details", "Mortgage Rate", 4, "% a year", false, "MortgageRate"},
    {"txtMortgageTerm", "Purchase Details", "Mortgage Term (yrs)", 0, "years", false, "MortgageTerm"},
    {"txtHouse", "Depreciation", "House Value", 2, "$", false, "HouseValue"},
    {"txtChattel", "Depreciation", "Chattels Value", 2, "$", false, "ChattelValue"},
    {"txtHouseDepn", "Depreciation", "House Depreciation Rate", 4, "% a year", false, "HouseDepn"},
    {"txtChattelDepn", "Depreciation", "Chattel Depreciation Rate", 4, "% a year", false, "ChattelDepn"},
    {"txtIncRental", "Income", "Rental Income", 2, "$ a year", true, "RentIncome"},
    {"txtExpRates", "Expenses (excl mortgage)", "Rates", 2, "$ a year", true, "Rates"},
    {"txtExpInsurance", "Expenses (excl mortgage)", "Insurance", 2, "$ a year", true, "Insurance"},
    {"txtExpRepair", "Expenses (excl mortgage)", "Repairs/Maintenance", 2, "$ a year", true, "ExpRepair"},
    {"txtExpFee", "Expenses (excl mortgage)", "Letting Fees", 2, "$ a year", true, "ExpFees"},
    {"txtExpOther", "Expenses (excl mortgage)", "Other New Expenses", 2, "$ a year", true, "OtherCosts"},
    {"txtInflation", "Inflation", "Expected inflation rate", 4, "% a year", false, "InflationRate"},
    {"txtPriceIncreases", "Inflation", "Property Price Increase", 4, "% a year", false, "PriceIncreases"},
};

}  // namespace ledgix::test
