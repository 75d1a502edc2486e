#include "cls_profile.h"

#include <span>

#include "clock.h"
#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "date_time.h"
#include "message_box.h"
#include "record_number.h"
#include "resume_next.h"

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

// The order of the table's columns.
constexpr auto kHouseholdExpenses = std::span(kExpenseAmounts).first<2>();
constexpr auto kOtherExpenses = std::span(kExpenseAmounts).last<9>();
constexpr std::array<std::span<const ProfileAmount>, 5> kAmountsInSavedOrder{
    kHouseholdExpenses, kIncomeAmounts, kOtherExpenses, kAssetAmounts, kLiabilityAmounts};

}  // namespace

std::string PropertyKey(std::int32_t lProfileNumber, std::int32_t lPropertyNumber) {
    return "P" + runtime::ToText(lProfileNumber) + "-" + runtime::ToText(lPropertyNumber);
}

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

void clsProfile::Save() {
    const auto statement = [](auto&& step) {
        runtime::ResumeNext(step, [](const runtime::RuntimeError& error) { ShowError(error, "clsProfile-Save"); });
    };
    const runtime::Date now = runtime::ToDate(runtime::SystemTime().Now());
    store::ClosingRecordset row;
    std::string sql = "select * from profiles where profilenumber = " + runtime::ToText(ProfileNumber);
    store::DataCreateSet(row.get(), sql, dao::kOpenDynaset, dao::kNoOptions);
    if (!store::DataIsEmpty(row.get()) && ProfileNumber != 0) {
        statement([&] { row->Edit(); });
    } else {
        if (!Saved && row.get() && store::DataIsEmpty(row.get()))
            ClearLeftovers();
        statement([&] { row->AddNew(); });
        statement([&] { row->Set("profilenumber", ProfileNumber); });
    }
    statement([&] { row->Set("profile_name", ProfileName); });
    for (const std::span<const ProfileAmount> amounts : kAmountsInSavedOrder)
        for (const ProfileAmount& amount : amounts)
            statement([&] { row->Set(amount.column, this->*amount.member); });
    statement([&] { row->Set("last_modified", now); });
    LastModified = now;
    Saved = true;
    statement([&] { row->Update(); });
}

// Properties of a deleted profile stay in the file, and its number may be given again; those of this one that were
// saved before it are not among them.
void clsProfile::ClearLeftovers() const {
    std::string sql = "delete from profileproperty where profilenumber = " + runtime::ToText(ProfileNumber);
    for (std::size_t i = 1; i <= properties_.Count(); ++i) {
        if (properties_[i].Saved)
            sql += " and propertynumber <> " + runtime::ToText(properties_[i].PropertyNumber);
    }
    store::ExecuteSQL(sql);
}

void clsProfile::Delete() const {
    std::string sql = "delete from profiles where ProfileNumber = " + runtime::ToText(ProfileNumber);
    store::ExecuteSQL(sql);
}

void clsProfile::RemoveProperty(std::size_t position) {
    Property(position).Delete();
    properties_.Remove(position);
}

void clsProfile::RemoveProperty(std::string_view key) {
    Property(key).Delete();
    properties_.Remove(key);
}

void clsProfile::ForgetProperty(std::string_view key) {
    properties_.Remove(key);
}

void clsProfile::TakeFreeNumber(clsProperty& property) {
    const std::string old_key = PropertyKey(ProfileNumber, property.PropertyNumber);
    property.PropertyNumber =
        FreeNumber(property.PropertyNumber,
                   "select * from profileproperty where profilenumber = " + runtime::ToText(ProfileNumber),
                   "propertynumber", highest_property_);
    properties_.Rename(old_key, PropertyKey(ProfileNumber, property.PropertyNumber));
}

void clsProfile::Display() {
    if (!editor_) {
        if (Saved)
            LoadProperties();
        editor_ = WindowsOfRecords().EditorOf(*this);
    }
    editor_->Show();
    runtime::ResumeNext([&] { editor_->BringToFront(); }, [](const runtime::RuntimeError&) {});
}

void clsProfile::CloseForm() {
    reports_.Clear();
    editor_.reset();
}

void clsProfile::Analyse() {
    constexpr std::int32_t kProfileReport = 0;
    reports_.Run(kProfileReport, *this, nullptr);
}

void clsProfile::RaiseReloadProperties() const {
    if (ReloadProperties)
        ReloadProperties();
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
    return properties_.Add(std::move(property), PropertyKey(lProfileNumber, lPropertyNumber));
}

clsProperty& clsProfile::AddProperty(std::int32_t lProfileNumber) {
    std::int32_t number = kNewNumber;
    return AddProperty(lProfileNumber, number);
}

}  // namespace ledgix::model
