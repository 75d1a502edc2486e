#include "cls_profiles.h"

#include <string>
#include <utility>

#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "message_box.h"
#include "record_number.h"

namespace ledgix::model {

std::unique_ptr<clsProfiles> gProfiles;

std::string ProfileKey(std::int32_t lProfileNumber) {
    return "P" + runtime::ToText(lProfileNumber);
}

clsProfile& clsProfiles::AddItem(std::int32_t& lProfileNumber) {
    auto profile = std::make_unique<clsProfile>();
    TakeNumber(lProfileNumber, highest_profile_);
    profile->ProfileNumber = lProfileNumber;
    return profiles_.Add(std::move(profile), ProfileKey(lProfileNumber));
}

clsProfile& clsProfiles::AddItem() {
    std::int32_t number = kNewNumber;
    return AddItem(number);
}

void clsProfiles::Remove(std::size_t position) {
    Item(position).Delete();
    profiles_.Remove(position);
}

void clsProfiles::Remove(std::string_view key) {
    Item(key).Delete();
    profiles_.Remove(key);
}

void clsProfiles::TakeFreeNumber(clsProfile& profile) {
    const std::string old_key = ProfileKey(profile.ProfileNumber);
    profile.ProfileNumber =
        FreeNumber(profile.ProfileNumber, "select * from Profiles", "profilenumber", highest_profile_);
    profiles_.Rename(old_key, ProfileKey(profile.ProfileNumber));
}

void clsProfiles::Load() {
    try {
        profiles_.Clear();
        store::ClosingRecordset rows;
        std::string sql = "select * from Profiles";
        store::DataCreateSet(rows.get(), sql, dao::kOpenForwardOnly, dao::kReadOnly);
        for (; !store::DataEOF(rows.get()); store::DataMoveNext(rows.get())) {
            std::int32_t number = runtime::ToInt32(rows["profilenumber"]);
            AddItem(number).Load(*rows.get());
        }
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "clsProfiles-Load");
    }
}

}  // namespace ledgix::model
