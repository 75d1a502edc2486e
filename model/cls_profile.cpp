#include "cls_profile.h"

#include <span>

#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "message_box.h"
#include "record_number.h"

namespace ledgix::model {

namespace {

double Total(const clsProfile& profile, std::span<const ProfileAmount> amounts) {
    double total = 0;
    for (const ProfileAmount& amount : amounts)
        total += profile.*amount.member;
    return total;
}

void LoadAmounts(clsProfile& profile, const dao::Recordset& row, std::span<const ProfileAmount> amounts) {
    for (const ProfileAmount& amount : amounts)
        profile.*amount.member = runtime::ToDouble(store::NullToValue(row[amount.column], 0.0));
}

}  // namespace

double clsProfile::TotalIncome() const {
    return Total(*this, kIncomeAmounts);
}
double clsProfile::TotalExpenses() const {
    return Total(*this, kExpenseAmounts);
}
double clsProfile::TotalAssets() const {
    return Total(*this, kAssetAmounts);
}
double clsProfile::TotalLiabilities() const {
    return Total(*this, kLiabilityAmounts);
}

void clsProfile::Load(const dao::Recordset& row) {
    ProfileNumber = runtime::ToInt32(store::NullToValue(row["ProfileNumber"], 0.0));
    ProfileName = runtime::ToText(store::NullToValue(row["profile_name"], std::string()));
    LoadAmounts(*this, row, kIncomeAmounts);
    LoadAmounts(*this, row, kExpenseAmounts);
    LoadAmounts(*this, row, kAssetAmounts);
    LoadAmounts(*this, row, kLiabilityAmounts);
    LastModified = runtime::ToDate(store::NullToValue(row["last_modified"], 0.0));
    Saved = true;
}

void clsProfile::ReloadProfile() {
    try {
        store::ClosingRecordset rows;
        std::string sql = "select * from Profiles where profilenumber = " + runtime::ToText(ProfileNumber);
        store::DataCreateSet(rows.get(), sql, dao::kOpenForwardOnly, dao::kReadOnly);
        if (!store::DataEOF(rows.get()))
            Load(*rows.get());
        LoadProperties();
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "clsProfiles-ReloadProfile");
    }
}

void clsProfile::LoadProperties() {
    try {
        properties_.Clear();
        store::ClosingRecordset rows;
        std::string sql = "select * from Profileproperty where profilenumber = " + runtime::ToText(ProfileNumber);
        store::DataCreateSet(rows.get(), sql, dao::kOpenForwardOnly, dao::kReadOnly);
        for (; !store::DataEOF(rows.get()); store::DataMoveNext(rows.get())) {
            std::int32_t number = runtime::ToInt32(rows["propertynumber"]);
            AddProperty(ProfileNumber, number).Load(*rows.get());
        }
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "clsProfile-LoadProperties");
    }
}

clsProperty& clsProfile::AddProperty(std::int32_t lProfileNumber, std::int32_t& lPropertyNumber) {
    auto property = std::make_unique<clsProperty>();
    TakeNumber(lPropertyNumber, highest_property_);
    property->ProfileNumber = lProfileNumber;
    property->PropertyNumber = lPropertyNumber;
    return properties_.Add(std::move(property),
                           "P" + runtime::ToText(lProfileNumber) + "-" + runtime::ToText(lPropertyNumber));
}

clsProperty& clsProfile::AddProperty(std::int32_t lProfileNumber) {
    std::int32_t number = kNewNumber;
    return AddProperty(lProfileNumber, number);
}

}  // namespace ledgix::model
