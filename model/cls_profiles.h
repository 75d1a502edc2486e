#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "cls_profile.h"
#include "keyed_collection.h"

namespace ledgix::model {

// "P12": what a profile is found by in the collection.
std::string ProfileKey(std::int32_t lProfileNumber);

// Every profile of the database, and the one place where profile numbers are handed out.
class clsProfiles {
public:
    // Adds a profile with this number; -1 stands for one above the highest number seen in this run, which is given back
    // in lProfileNumber. The collection owns the profile. Errors: 6 beyond 32 bits, 457 when the number is held
    // already.
    clsProfile& AddItem(std::int32_t& lProfileNumber);
    clsProfile& AddItem();

    // By position from 1, or by the key "P" + profile number. Errors: 9, 5 when there is none.
    clsProfile& Item(std::size_t position) const { return profiles_[position]; }
    clsProfile& Item(std::string_view key) const { return profiles_[key]; }
    std::size_t Count() const { return profiles_.Count(); }
    const KeyedCollection<clsProfile>& Profiles() const { return profiles_; }

    // Deletes the profile's row, then forgets the profile. Errors as of Item, before anything is deleted.
    void Remove(std::size_t position);
    void Remove(std::string_view key);

    // Gives a profile of this collection that was never saved another number, one above the highest of the database,
    // when another program has taken its number meanwhile. Its properties must not have been added yet.
    void TakeFreeNumber(clsProfile& profile);

    // Replaces the content by every row of Profiles, in the database's order; the highest number seen stays. An error
    // ends it in a message box; what was loaded so far stays. Properties are not loaded.
    void Load();

private:
    KeyedCollection<clsProfile> profiles_;
    std::int32_t highest_profile_ = 0;
};

// The program's one collection, from start-up to its end.
extern std::unique_ptr<clsProfiles> gProfiles;

}  // namespace ledgix::model
