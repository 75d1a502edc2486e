#include "purchase_analysis.h"

#include "rounding.h"

namespace ledgix::model {

FirstYear AnalyseFirstYear(clsProperty& property, const clsProfile& profile, const IncomeTaxFunction& tax) {
    using runtime::CheckOverflow;
    using runtime::Round;
    FirstYear year;
    year.MC = property.MortgageCost();
    year.DC = CheckOverflow(Round(property.ChattelDepn / 100 * property.ChattelValue, 0));
    year.DH = CheckOverflow(Round(property.HouseDepn / 100 * property.HouseValue, 0));
    const double cash = property.RentIncome - property.Repairs - property.Fees - property.Rates - property.Insurance -
                        property.OtherCosts - year.MC;
    year.PT = CheckOverflow(cash - year.DH - year.DC);
    year.S = profile.IncSalary;
    year.TA = tax(year.S + year.PT);
    year.TB = tax(year.S);
    year.R = year.TB - year.TA;
    year.SP = CheckOverflow(cash + year.R);
    year.SB = CheckOverflow(profile.TotalIncome() - year.TB - profile.TotalExpenses());
    year.SA = CheckOverflow(profile.TotalIncome() - year.TB + property.RentIncome - profile.TotalExpenses() -
                            property.Repairs - property.Fees - property.Rates - property.Insurance -
                            property.OtherCosts - year.MC + year.R);
    return year;
}

}  // namespace ledgix::model
