#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "open_reports.h"
#include "record_windows.h"
#include "recordset.h"
#include "yearly_records.h"

namespace ledgix::model {

// One candidate purchase of a profile: dollars, dollars a year, percent a year, whole years.
class clsProperty {
public:
    bool Saved = false;  // loaded from a row, or saved
    std::int32_t ProfileNumber = 0;
    std::int32_t PropertyNumber = 0;
    std::string PropertyName;
    double PurchasePrice = 0;
    double PurchaseCosts = 0;
    double DepositValue = 0;
    float MortgageRate = 0;  // fixed for the whole term
    bool InterestOnly = false;
    std::int16_t MortgageTerm = 0;
    double Rates = 0;
    double Insurance = 0;
    double OtherCosts = 0;
    double RentIncome = 0;
    double InflationRate = 0;
    double HouseValue = 0;  // what of the price can be depreciated
    double ChattelValue = 0;
    double HouseDepn = 0;
    double ChattelDepn = 0;
    double PriceIncreases = 0;
    double Fees = 0;
    double Repairs = 0;

    // Reads the current row of ProfileProperty. Errors: 94 for a Null number, 3265 for a missing column, 6 and 13 for
    // values that do not fit. A Null name reads as empty.
    void Load(const dao::Recordset& row);

    // Writes the property's row; a new one where there is none, or the number is 0. An error ends it and goes to the
    // error log; the object keeps its values, and the result is false.
    bool Save();

    // Removes the row of both numbers.
    void Delete() const;

    // Reads the property's row again, where there is one. An error ends it and goes to the error log.
    void Reload();

    // Shows the property's editor, which is modal: returns when the user is done. The property may be gone by then.
    // Error 91 without windows.
    void Display();

    // Unloads the editor, and closes the previews of the property's reports with it.
    void CloseForm();

    // Show the first year's report and the ten years' report. The property keeps their writers until CloseForm, so that
    // a preview can run them again; the profile must last as long. Error 91 without windows.
    void Analysis(clsProfile& objProfile);
    void Year10Analysis(clsProfile& objProfile);

    // What is borrowed: price and costs less the deposit.
    double MortgageValue() const { return PurchaseCosts + PurchasePrice - DepositValue; }

    // Repairs, fees, rates, insurance and other costs of a year.
    double RunningCosts() const { return Repairs + Fees + Rates + Insurance + OtherCosts; }

    // The mortgage payments of the first year in whole dollars; 0 without rate, term or mortgage, and then the records
    // stay as they are. Else every year's interest and principal, rounded to whole dollars and negative, go into the
    // records of years 1 to 20; other years get 0. Errors: 6 when the term is beyond 2730 years, or a sum beyond a
    // double, 11 when the rate is too small to tell from 0.
    double MortgageCost();

    YearlyRecords records{};

private:
    void WriteRow();
    // "select * from ..." of the row.
    std::string RowStatement() const;

    OpenReports reports_;
    std::unique_ptr<EditorWindow> editor_;
};

}  // namespace ledgix::model
