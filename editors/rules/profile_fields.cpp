#include "profile_fields.h"

#include "date_time.h"
#include "regional_settings.h"
#include "runtime_error.h"

namespace ledgix::editors {

namespace {

using model::clsProfile;

constexpr ProfileField kIncome[]{
    {"txtIncSalary", "Salary/Wages (before tax)", &clsProfile::IncSalary},
    {"txtIncRental", "Rental Income", &clsProfile::IncRentalIncome},
    {"txtIncInterest", "Interest Received", &clsProfile::IncInterestReceived},
    {"txtIncDividends", "Dividends", &clsProfile::IncDividends},
    {"txtIncOther", "Other", &clsProfile::IncOtherIncome},
};

constexpr ProfileField kExpenses[]{
    {"txtExpGeneral", "General Living Expenses (food etc)", &clsProfile::ExpGeneral},
    {"txtExpPower", "Power", &clsProfile::ExpPower},
    {"txtExpRates", "Rates", &clsProfile::ExpRates},
    {"txtExpInsurance", "Insurance", &clsProfile::ExpInsurance},
    {"txtExpCreditCards", "Credit Cards", &clsProfile::ExpCreditCards},
    {"txtExpHP", "Hire Purchase", &clsProfile::ExpHP},
    {"txtExpOtherLoans", "Other Loans", &clsProfile::ExpOtherLoan},
    {"txtExpOther", "Other Expenses", &clsProfile::ExpOther},
    {"txtExpMortgage", "Mortgage Repayments", &clsProfile::ExpMortgage},
    {"txtExpVehicle", "Vehicle Expenses", &clsProfile::ExpVehicle},
    {"txtExpRent", "Rent/Board", &clsProfile::ExpRent},
};

constexpr ProfileField kAssets[]{
    {"txtAssFamily", "Family Home", &clsProfile::AssFamilyHome},
    {"txtAssRental", "Rental Properties", &clsProfile::AssRentalProperties},
    {"txtAssShares", "Shares/Investments", &clsProfile::AssShares},
    {"txtAssVehicle", "Vehicles", &clsProfile::AssVehicles},
    {"txtAssCash", "Cash", &clsProfile::AssCash},
    {"txtAssOther", "Other Assets", &clsProfile::AssOther},
};

constexpr ProfileField kLiabilities[]{
    // Spelt as users know it.
    {"txtLibHome", "Familty Home Mortgage", &clsProfile::LibHomeMortgage},
    {"txtLibRental", "Rental Home Mortgages", &clsProfile::LibRentalMortgage},
    {"txtLibLoans", "Loans", &clsProfile::LibLoans},
    {"txtLibOther", "Other Liabilities", &clsProfile::LibOther},
};

constexpr std::array<ProfilePage, kProfilePageCount> kPages{{
    {"Income", "frmIncome", true, kIncome},
    {"Expenses", "frmExpense", true, kExpenses},
    {"Assets", "frmAssets", false, kAssets},
    {"Liabilities", "frmLiabilities", false, kLiabilities},
    {"Purchases", "frmPurchases", false, {}},
}};

std::string JoinPages(const char* ProfilePage::*text) {
    std::string joined;
    for (const ProfilePage& page : kPages) {
        joined += page.*text;
        joined += '|';
    }
    return joined;
}

}  // namespace

const std::array<ProfilePage, kProfilePageCount>& ProfilePages() {
    return kPages;
}

std::string ProfileTabs() {
    return JoinPages(&ProfilePage::caption);
}

std::string ProfileFrames() {
    return JoinPages(&ProfilePage::frame);
}

std::string LastUpdatedText(const clsProfile& profile) {
    if (!profile.Saved)
        return {};
    const runtime::RegionalSettings& region = runtime::Region();
    try {
        return runtime::FormatDate(runtime::ToCivilTime(profile.LastModified), region.short_date,
                                   region.month_abbreviations);
    } catch (const runtime::RuntimeError&) {
        return {};
    }
}

}  // namespace ledgix::editors
