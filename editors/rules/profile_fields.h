#pragma once

#include <array>
#include <span>
#include <string>

#include "cls_profile.h"

namespace ledgix::editors {

// An amount on a page of the profile editor.
struct ProfileField {
    const char* name;     // of the box
    const char* caption;  // of its label
    double model::clsProfile::*member;
};

struct ProfilePage {
    const char* caption;  // of its tab
    const char* frame;
    bool yearly;  // amounts are dollars a year, else dollars
    std::span<const ProfileField> fields;
};

// The pages in the order of their tabs; the last one holds the purchases and no amounts.
inline constexpr int kProfilePageCount = 5;
inline constexpr int kPurchasesTab = 5;
const std::array<ProfilePage, kProfilePageCount>& ProfilePages();

// "Income|Expenses|" and "frmIncome|frmExpense|": captions and frames of all pages, as a tab dialog takes them.
std::string ProfileTabs();
std::string ProfileFrames();

// The day of the last save in the region's short form. Empty for a profile that was never saved, and for a moment
// outside the calendar.
std::string LastUpdatedText(const model::clsProfile& profile);

}  // namespace ledgix::editors
