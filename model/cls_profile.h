#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "cls_property.h"
#include "keyed_collection.h"
#include "open_reports.h"
#include "record_windows.h"
#include "recordset.h"
#include "variant.h"

namespace ledgix::model {

// "P3-7": what a property is found by in its profile.
std::string PropertyKey(std::int32_t lProfileNumber, std::int32_t lPropertyNumber);

// A household's yearly income and expenses before tax, its assets and liabilities, in dollars, and its candidate
// purchases.
class clsProfile {
public:
    double IncSalary = 0;
    double IncRentalIncome = 0;
    double IncOtherIncome = 0;
    double IncInterestReceived = 0;
    double IncDividends = 0;
    double ExpGeneral = 0;
    double ExpMortgage = 0;
    double ExpVehicle = 0;
    double ExpPower = 0;
    double ExpRates = 0;
    double ExpRent = 0;
    double ExpInsurance = 0;
    double ExpCreditCards = 0;
    double ExpHP = 0;
    double ExpOtherLoan = 0;
    double ExpOther = 0;
    double AssFamilyHome = 0;
    double AssRentalProperties = 0;
    double AssShares = 0;
    double AssVehicles = 0;
    double AssCash = 0;
    double AssOther = 0;
    double LibHomeMortgage = 0;
    double LibRentalMortgage = 0;
    double LibLoans = 0;
    double LibOther = 0;
    std::string ProfileName;
    runtime::Date LastModified;
    std::int32_t ProfileNumber = 0;
    bool Saved = false;  // loaded from a row, or saved

    // Gross: no income tax is deducted.
    double TotalIncome() const;
    double TotalExpenses() const;
    double TotalAssets() const;
    double TotalLiabilities() const;

    // Reads the current row of Profiles; Null reads as 0 or empty. Errors: 3265 for a missing column, 6 and 13 for
    // values that do not fit.
    void Load(const dao::Recordset& row);

    // Writes the profile's row, and LastModified with it; a new row where there is none, or the number is 0. Each
    // statement that fails shows a message box, and the next one follows. A profile that is new in the database takes
    // over no properties of a former one with its number.
    void Save();

    // Removes the profile's row, and that only.
    void Delete() const;

    // Reads the profile's row and its properties afresh. An error ends it in a message box.
    void ReloadProfile();

    // Empties the list of properties and fills it from ProfileProperty. An error ends it in a message box; what was
    // loaded so far stays.
    void LoadProperties();

    // Adds a property with this number; -1 stands for one above the highest number seen, which is given back in
    // lPropertyNumber. The profile owns the property. Errors: 6 beyond 32 bits, 457 when the number is held already.
    clsProperty& AddProperty(std::int32_t lProfileNumber, std::int32_t& lPropertyNumber);
    clsProperty& AddProperty(std::int32_t lProfileNumber);

    // By position from 1, or by the key "P" + profile number + "-" + property number. Errors: 9, 5 when there is none.
    clsProperty& Property(std::size_t position) const { return properties_[position]; }
    clsProperty& Property(std::string_view key) const { return properties_[key]; }
    std::size_t PropertyCount() const { return properties_.Count(); }
    const KeyedCollection<clsProperty>& Properties() const { return properties_; }

    // Deletes the property's row, then forgets the property. Errors as of Property, before anything is deleted.
    void RemoveProperty(std::size_t position);
    void RemoveProperty(std::string_view key);

    // Forgets a property and leaves the database alone. Error as of Property.
    void ForgetProperty(std::string_view key);

    // Gives a property of this profile that was never saved another number, one above the highest of the database, when
    // another program has taken its number meanwhile.
    void TakeFreeNumber(clsProperty& property);

    // Opens the profile's editor, or brings the open one to the front. A saved profile reads its properties afresh when
    // its editor opens. Error 91 without windows.
    void Display();

    // Unloads the editor, and closes the previews of the profile's reports with it.
    void CloseForm();

    // Shows the profile report. The profile keeps its writer until CloseForm, so that the preview can run it again.
    // Error 91 without windows.
    void Analyse();

    // Told when the list of properties has changed; the open editor listens.
    std::function<void()> ReloadProperties;
    void RaiseReloadProperties() const;

private:
    void ClearLeftovers() const;

    KeyedCollection<clsProperty> properties_;
    std::int32_t highest_property_ = 0;
    OpenReports reports_;
    std::unique_ptr<EditorWindow> editor_;
};

// An amount of a profile. Its column bears the member's name.
struct ProfileAmount {
    std::string_view column;
    double clsProfile::*member;
};

inline constexpr std::array<ProfileAmount, 5> kIncomeAmounts{{
    {"IncSalary", &clsProfile::IncSalary},
    {"IncRentalIncome", &clsProfile::IncRentalIncome},
    {"IncOtherIncome", &clsProfile::IncOtherIncome},
    {"IncInterestReceived", &clsProfile::IncInterestReceived},
    {"IncDividends", &clsProfile::IncDividends},
}};

inline constexpr std::array<ProfileAmount, 11> kExpenseAmounts{{
    {"ExpGeneral", &clsProfile::ExpGeneral},
    {"ExpMortgage", &clsProfile::ExpMortgage},
    {"ExpVehicle", &clsProfile::ExpVehicle},
    {"ExpPower", &clsProfile::ExpPower},
    {"ExpRates", &clsProfile::ExpRates},
    {"ExpRent", &clsProfile::ExpRent},
    {"ExpInsurance", &clsProfile::ExpInsurance},
    {"ExpCreditCards", &clsProfile::ExpCreditCards},
    {"ExpHP", &clsProfile::ExpHP},
    {"ExpOtherLoan", &clsProfile::ExpOtherLoan},
    {"ExpOther", &clsProfile::ExpOther},
}};

inline constexpr std::array<ProfileAmount, 6> kAssetAmounts{{
    {"AssFamilyHome", &clsProfile::AssFamilyHome},
    {"AssRentalProperties", &clsProfile::AssRentalProperties},
    {"AssShares", &clsProfile::AssShares},
    {"AssVehicles", &clsProfile::AssVehicles},
    {"AssCash", &clsProfile::AssCash},
    {"AssOther", &clsProfile::AssOther},
}};

inline constexpr std::array<ProfileAmount, 4> kLiabilityAmounts{{
    {"LibHomeMortgage", &clsProfile::LibHomeMortgage},
    {"LibRentalMortgage", &clsProfile::LibRentalMortgage},
    {"LibLoans", &clsProfile::LibLoans},
    {"LibOther", &clsProfile::LibOther},
}};

}  // namespace ledgix::model
