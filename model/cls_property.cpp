#include "cls_property.h"

#include <cmath>

#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "error_log.h"
#include "rounding.h"

namespace ledgix::model {

namespace {

using runtime::Round;

constexpr int kMonthsOfYear = 12;

// Interest and principal paid since the start, and what they were at the end of the year before.
struct MortgageSums {
    double interest = 0;
    double principal = 0;
    double interest_before = 0;
    double principal_before = 0;

    void CloseYear() {
        interest_before = interest;
        principal_before = principal;
    }
};

void RecordYear(YearlyRecords& records, std::size_t year, const MortgageSums& sums) {
    if (year > kLastYear)
        return;
    records[year][YearValue::kInterest] = 0 - Round(sums.interest - sums.interest_before, 0);
    records[year][YearValue::kPrincipal] = 0 - Round(sums.principal - sums.principal_before, 0);
}

}  // namespace

void clsProperty::Load(const dao::Recordset& row) {
    const auto number = [&](std::string_view column) { return runtime::ToDouble(row[column]); };
    ProfileNumber = runtime::ToInt32(row["ProfileNumber"]);
    PropertyNumber = runtime::ToInt32(row["PropertyNumber"]);
    PropertyName = runtime::ToText(store::NullToValue(row["PropertyName"], std::string()));
    PurchasePrice = number("PurchasePrice");
    PurchaseCosts = number("PurchaseCosts");
    DepositValue = number("DepositValue");
    MortgageRate = runtime::ToSingle(row["MortgageRate"]);
    InterestOnly = runtime::ToBoolean(row["InterestOnly"]);
    MortgageTerm = runtime::ToInt16(row["MortgageTerm"]);
    Rates = number("Rates");
    Insurance = number("Insurance");
    OtherCosts = number("OtherCosts");
    RentIncome = number("RentIncome");
    InflationRate = number("InflationRate");
    HouseValue = number("HouseValue");
    ChattelValue = number("ChattelValue");
    HouseDepn = number("HouseDepn");
    ChattelDepn = number("ChattelDepn");
    PriceIncreases = number("PriceIncreases");
    Fees = number("ExpFees");
    Repairs = number("ExpRepair");
    Saved = true;
}

bool clsProperty::Save() {
    const bool saved_before = Saved;
    try {
        WriteRow();
        return true;
    } catch (const runtime::RuntimeError& error) {
        Saved = saved_before;
        services::DatabaseErrorHandler("clsProperty-Save", error);
        return false;
    }
}

std::string clsProperty::RowStatement() const {
    return "select * from profileproperty where profilenumber = " + runtime::ToText(ProfileNumber) +
           " and propertynumber = " + runtime::ToText(PropertyNumber);
}

void clsProperty::WriteRow() {
    store::ClosingRecordset row;
    std::string sql = RowStatement();
    store::DataCreateSet(row.get(), sql, dao::kOpenDynaset, dao::kNoOptions);
    if (!store::DataEOF(row.get()) && PropertyNumber != 0) {
        row->Edit();
    } else {
        row->AddNew();
        row->Set("profilenumber", ProfileNumber);
        row->Set("propertynumber", PropertyNumber);
    }
    row->Set("propertyname", PropertyName);
    row->Set("PurchasePrice", PurchasePrice);
    row->Set("PurchaseCosts", PurchaseCosts);
    row->Set("DepositValue", DepositValue);
    row->Set("MortgageRate", MortgageRate);
    row->Set("Rates", Rates);
    row->Set("InterestOnly", InterestOnly);
    row->Set("RentIncome", RentIncome);
    row->Set("OtherCosts", OtherCosts);
    row->Set("Insurance", Insurance);
    row->Set("MortgageTerm", MortgageTerm);
    row->Set("InflationRate", InflationRate);
    row->Set("HouseValue", HouseValue);
    row->Set("HouseDepn", HouseDepn);
    row->Set("ChattelDepn", ChattelDepn);
    row->Set("ChattelValue", ChattelValue);
    row->Set("ExpRepair", Repairs);
    row->Set("ExpFees", Fees);
    row->Set("PriceIncreases", PriceIncreases);
    Saved = true;
    row->Update();
}

void clsProperty::Delete() const {
    std::string sql = "delete from profileproperty where ProfileNumber = " + runtime::ToText(ProfileNumber) +
                      " and propertynumber = " + runtime::ToText(PropertyNumber);
    store::ExecuteSQL(sql);
}

void clsProperty::Reload() {
    try {
        store::ClosingRecordset row;
        std::string sql = RowStatement();
        store::DataCreateSet(row.get(), sql, dao::kOpenForwardOnly, dao::kReadOnly);
        if (!store::DataEOF(row.get()))
            Load(*row.get());
    } catch (const runtime::RuntimeError& error) {
        services::DatabaseErrorHandler("clsProperty-Reload", error);
    }
}

void clsProperty::Display() {
    if (!editor_)
        editor_ = WindowsOfRecords().EditorOf(*this);
    editor_->Show();
}

void clsProperty::CloseForm() {
    reports_.Clear();
    editor_.reset();
}

void clsProperty::Analysis(clsProfile& objProfile) {
    constexpr std::int32_t kFirstYear = 1;
    reports_.Run(kFirstYear, objProfile, this);
}

void clsProperty::Year10Analysis(clsProfile& objProfile) {
    constexpr std::int32_t kTenYears = 2;
    reports_.Run(kTenYears, objProfile, this);
}

// Monthly payment ((q - 1) L) / (1 - q^-n) with the monthly factor q, the mortgage L and n months.
double clsProperty::MortgageCost() {
    const double mortgage = MortgageValue();
    const std::int16_t months = runtime::ToInt16(MortgageTerm * static_cast<double>(kMonthsOfYear));
    if (MortgageRate <= 0 || months <= 0 || mortgage <= 0)
        return 0;
    const double factor = 1 + static_cast<double>(MortgageRate) / 100 / kMonthsOfYear;
    const double payment = runtime::Divide(runtime::CheckOverflow((factor - 1) * mortgage),
                                           1 - std::pow(factor, -static_cast<double>(months)));
    for (YearRecord& record : records)
        record[YearValue::kInterest] = record[YearValue::kPrincipal] = 0;

    double cost = 0;
    double balance = mortgage;
    MortgageSums sums;
    for (int month = 1; month <= months; ++month) {
        const double interest = (factor - 1) * balance;
        const double principal = InterestOnly ? 0 : payment - interest;
        balance -= principal;
        sums.interest += interest;
        sums.principal += principal;
        if (month % kMonthsOfYear != 0)
            continue;
        if (month == kMonthsOfYear)
            cost = runtime::CheckOverflow(Round(sums.principal + sums.interest, 0));
        RecordYear(records, static_cast<std::size_t>(month / kMonthsOfYear), sums);
        sums.CloseYear();
    }
    return cost;
}

}  // namespace ledgix::model
