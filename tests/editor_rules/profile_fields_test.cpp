#include "profile_fields.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "scoped_region.h"

namespace ledgix::editors {
namespace {

using model::clsProfile;

TEST(ProfileFields, PagesFollowTheTabs) {
    EXPECT_EQ(ProfileTabs(), "Income|Expenses|Assets|Liabilities|Purchases|");
    EXPECT_EQ(ProfileFrames(), "frmIncome|frmExpense|frmAssets|frmLiabilities|frmPurchases|");
    EXPECT_STREQ(ProfilePages()[kPurchasesTab - 1].caption, "Purchases");
}

TEST(ProfileFields, EachPageShowsAllAmountsOfItsGroup) {
    const auto& pages = ProfilePages();
    EXPECT_EQ(pages[0].fields.size(), model::kIncomeAmounts.size());
    EXPECT_EQ(pages[1].fields.size(), model::kExpenseAmounts.size());
    EXPECT_EQ(pages[2].fields.size(), model::kAssetAmounts.size());
    EXPECT_EQ(pages[3].fields.size(), model::kLiabilityAmounts.size());
    EXPECT_TRUE(pages[4].fields.empty());
}

TEST(ProfileFields, EachPageAddsUpToTheTotalOfItsGroup) {
    clsProfile profile;
    double next = 1;
    const auto fill = [&](const ProfilePage& page) {
        double sum = 0;
        for (const ProfileField& field : page.fields)
            sum += profile.*field.member = next *= 2;
        return sum;
    };
    std::vector<double> sums;
    for (const ProfilePage& page : ProfilePages())
        sums.push_back(fill(page));
    EXPECT_EQ(sums, (std::vector<double>{profile.TotalIncome(), profile.TotalExpenses(), profile.TotalAssets(),
                                         profile.TotalLiabilities(), 0}));
}

TEST(ProfileFields, NoTwoFieldsShareANameOrAnAmount) {
    std::set<std::string> names;
    clsProfile profile;
    std::set<const double*> amounts;
    for (const ProfilePage& page : ProfilePages()) {
        for (const ProfileField& field : page.fields) {
            EXPECT_TRUE(names.insert(field.name).second) << field.name;
            EXPECT_TRUE(amounts.insert(&(profile.*field.member)).second) << field.name;
        }
    }
    EXPECT_EQ(names.size(), 26U);
}

TEST(ProfileFields, IncomeAndExpensesAreYearly) {
    std::map<std::string, bool> yearly;
    for (const ProfilePage& page : ProfilePages())
        yearly[page.caption] = page.yearly;
    EXPECT_EQ(
        yearly,
        (std::map<std::string, bool>{
            {"Income", true}, {"Expenses", true}, {"Assets", false}, {"Liabilities", false}, {"Purchases", false}}));
}

TEST(ProfileFields, FieldsStandInTheFormsOrder) {
    std::string order;
    for (const ProfilePage& page : ProfilePages())
        for (const ProfileField& field : page.fields) {
            order += field.caption;
            order += ';';
        }
    EXPECT_EQ(order,
              "Salary/Wages (before tax);Rental Income;Interest Received;Dividends;Other;"
              "General Living Expenses (food etc);Power;Rates;Insurance;Credit Cards;Hire Purchase;Other Loans;"
              "Other Expenses;Mortgage Repayments;Vehicle Expenses;Rent/Board;"
              "Family Home;Rental Properties;Shares/Investments;Vehicles;Cash;Other Assets;"
              "Familty Home Mortgage;Rental Home Mortgages;Loans;Other Liabilities;");
}

clsProfile SavedAt(runtime::Date moment) {
    clsProfile profile;
    profile.Saved = true;
    profile.LastModified = moment;
    return profile;
}

TEST(LastUpdated, IsADayInTheRegionsShortForm) {
    const clsProfile profile = SavedAt(runtime::ToDate(runtime::CivilTime{2026, 2, 14, 20, 15, 30}));
    {
        const test::ScopedRegion region;
        EXPECT_EQ(LastUpdatedText(profile), "2/14/2026");
    }
    runtime::RegionalSettings german = runtime::UnitedStates();
    german.short_date = "dd.mm.yyyy";
    const test::ScopedRegion region(german);
    EXPECT_EQ(LastUpdatedText(profile), "14.02.2026");
}

TEST(LastUpdated, IsBlankForAProfileThatWasNeverSaved) {
    clsProfile profile = SavedAt(runtime::Date{46000});
    profile.Saved = false;
    EXPECT_EQ(LastUpdatedText(profile), "");
}

TEST(LastUpdated, IsBlankForAMomentOutsideTheCalendar) {
    EXPECT_EQ(LastUpdatedText(SavedAt(runtime::Date{1e300})), "");
    EXPECT_EQ(LastUpdatedText(SavedAt(runtime::Date{std::numeric_limits<double>::quiet_NaN()})), "");
}

}  // namespace
}  // namespace ledgix::editors
