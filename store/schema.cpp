#include "schema.h"

#include <array>

namespace ledgix::store {

namespace {

using dao::FieldType;

constexpr SchemaColumn Number(std::string_view name) {
    return {name, dao::kLong, 0, "0"};
}
constexpr SchemaColumn Amount(std::string_view name) {
    return {name, dao::kDouble, 0, "0"};
}
constexpr SchemaColumn Name(std::string_view name) {
    return {name, dao::kText, 50, "''"};
}

constexpr std::array kProfiles{
    Number("ProfileNumber"),
    Name("profile_name"),
    Amount("ExpGeneral"),
    Amount("ExpMortgage"),
    Amount("IncSalary"),
    Amount("IncRentalIncome"),
    Amount("IncOtherIncome"),
    Amount("IncInterestReceived"),
    Amount("IncDividends"),
    Amount("ExpVehicle"),
    Amount("ExpPower"),
    Amount("ExpRates"),
    Amount("ExpRent"),
    Amount("ExpInsurance"),
    Amount("ExpCreditCards"),
    Amount("ExpHP"),
    Amount("ExpOtherLoan"),
    Amount("ExpOther"),
    Amount("AssFamilyHome"),
    Amount("AssRentalProperties"),
    Amount("AssShares"),
    Amount("AssVehicles"),
    Amount("AssCash"),
    Amount("AssOther"),
    Amount("LibHomeMortgage"),
    Amount("LibRentalMortgage"),
    Amount("LibLoans"),
    Amount("LibOther"),
    SchemaColumn{"last_modified", dao::kDate, 0, "#01/01/1900#"},
};
constexpr std::array<std::string_view, 1> kProfilesKey{"ProfileNumber"};

constexpr std::array kProfileProperty{
    Number("ProfileNumber"),
    Number("PropertyNumber"),
    Name("PropertyName"),
    Amount("PurchasePrice"),
    Amount("PurchaseCosts"),
    Amount("DepositValue"),
    SchemaColumn{"MortgageRate", dao::kSingle, 0, "0"},
    Amount("Rates"),
    SchemaColumn{"InterestOnly", dao::kBoolean, 0, "0"},
    Amount("RentIncome"),
    Amount("OtherCosts"),
    Amount("Insurance"),
    SchemaColumn{"MortgageTerm", dao::kInteger, 0, "0"},
    Amount("InflationRate"),
    Amount("HouseValue"),
    Amount("Chattelvalue"),
    Amount("HouseDepn"),
    Amount("ChattelDepn"),
    SchemaColumn{"PriceIncreases", dao::kDouble, 0, "3.5"},
    Amount("ExpFees"),
    Amount("expRepair"),
};
constexpr std::array<std::string_view, 2> kProfilePropertyKey{"ProfileNumber", "PropertyNumber"};

// The size of a single is passed as it has always been; the type has a fixed one.
constexpr std::array kTaxRates{Number("upper"), SchemaColumn{"rate", dao::kSingle, 10, "0"}};

}  // namespace

const SchemaTable& ProfilesTable() {
    static constexpr SchemaTable kTable{"Profiles", kProfiles, kProfilesKey};
    return kTable;
}

const SchemaTable& ProfilePropertyTable() {
    static constexpr SchemaTable kTable{"ProfileProperty", kProfileProperty, kProfilePropertyKey};
    return kTable;
}

const SchemaTable& TaxRatesTable() {
    static constexpr SchemaTable kTable{"Tax_Rates", kTaxRates, {}};
    return kTable;
}

std::vector<std::string> MissingFrom(dao::Database& database, const SchemaTable& table) {
    if (!database.HasTable(table.name))
        return {"table " + std::string(table.name)};
    const dao::TableDef stored = database.TableDefinition(table.name);
    std::vector<std::string> missing;
    for (const SchemaColumn& column : table.columns)
        if (!stored.fields.Contains(column.name))
            missing.push_back("column " + std::string(table.name) + "." + std::string(column.name));
    return missing;
}

}  // namespace ledgix::store
