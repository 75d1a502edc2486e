#include "cls_profile.h"

#include <gtest/gtest.h>

#include <limits>

#include "cases.h"
#include "cls_profiles.h"
#include "date_time.h"
#include "error_of.h"
#include "household_builder.h"
#include "message_recorder.h"

namespace ledgix::model {
namespace {

using runtime::ErrorNumber;
using test::Json;

const std::string kHousehold = LEDGIX_TEST_DATA "/mdb/household-2000.mdb";

class PropertyNumbering : public testing::TestWithParam<Json> {};

TEST_P(PropertyNumbering, FollowsTheHighestNumberSeen) {
    const auto owner = GetParam().at("ProfileNumber").get<std::int32_t>();
    clsProfile profile;
    for (const Json& held : GetParam().at("propertyNumbers")) {
        auto number = held.get<std::int32_t>();
        profile.AddProperty(owner, number);
    }
    EXPECT_EQ(profile.Properties().Keys(), GetParam().at("keys").get<std::vector<std::string>>());
    std::int32_t number = -1;
    profile.AddProperty(owner, number);
    EXPECT_EQ(number, GetParam().at("newNumber").get<std::int32_t>());
    EXPECT_EQ(profile.Property(GetParam().at("newKey").get<std::string>()).PropertyNumber, number);
}

INSTANTIATE_TEST_SUITE_P(Numbering, PropertyNumbering,
                         testing::ValuesIn(test::CaseList(test::LoadCases("numbering.json").at("properties"))),
                         test::CaseName);

TEST(Profile, TotalsAreTheSumsOfTheirGroups) {
    clsProfile profile;
    double next = 1;
    for (const ProfileAmount& amount : kIncomeAmounts)
        profile.*amount.member = next++;
    for (const ProfileAmount& amount : kExpenseAmounts)
        profile.*amount.member = next++;
    for (const ProfileAmount& amount : kAssetAmounts)
        profile.*amount.member = next++;
    for (const ProfileAmount& amount : kLiabilityAmounts)
        profile.*amount.member = next++;
    EXPECT_EQ(profile.TotalIncome(), 1 + 2 + 3 + 4 + 5);
    EXPECT_EQ(profile.TotalExpenses(), 121);
    EXPECT_EQ(profile.TotalAssets(), 117);
    EXPECT_EQ(profile.TotalLiabilities(), 98);
}

TEST(Profile, IncomeIsBeforeTax) {
    clsProfile profile;
    profile.IncSalary = 50000;
    EXPECT_EQ(profile.TotalIncome(), 50000);
}

TEST(Profile, LoadsEveryFieldOfItsRow) {
    const test::InstalledDatabase database(kHousehold);
    clsProfiles profiles;
    profiles.Load();
    const clsProfile& profile = profiles.Item("P1");
    EXPECT_EQ(profile.ProfileName, "Hannah and Tom Whitaker");
    EXPECT_EQ(profile.ExpPower, 2450.75);
    EXPECT_EQ(profile.LibOther, 2300);
    EXPECT_EQ(runtime::ToIso8601(profile.LastModified), "2026-02-14T20:15:30");
    EXPECT_EQ(profiles.Item("P4").ProfileName, "Joana Brandão");
}

TEST(Profile, NullAmountsLoadAsZeroAndANullNameAsEmpty) {
    test::HouseholdBuilder builder;
    builder.AddProfile(3, {{"profile_name", nullptr}, {"IncSalary", nullptr}, {"ExpOther", 5}});
    const test::InstalledDatabase database(builder.Finish());
    clsProfiles profiles;
    profiles.Load();
    const clsProfile& profile = profiles.Item("P3");
    EXPECT_EQ(profile.ProfileName, "");
    EXPECT_EQ(profile.IncSalary, 0);
    EXPECT_EQ(profile.ExpOther, 5);
    EXPECT_TRUE(profile.Saved);
}

TEST(Profile, ReloadingReadsTheRowAndTheProperties) {
    const test::InstalledDatabase database(kHousehold);
    clsProfile profile;
    profile.ProfileNumber = 4;
    profile.ReloadProfile();
    EXPECT_EQ(profile.ProfileName, "Joana Brandão");
    EXPECT_EQ(profile.Properties().Keys(), (std::vector<std::string>{"P4-1", "P4-3"}));
    EXPECT_EQ(profile.Property("P4-3").PropertyName, "Corner shop, 2 True Street");
    EXPECT_EQ(profile.AddProperty(4).PropertyNumber, 4);
}

TEST(Profile, ReloadingTwiceDoublesNothing) {
    const test::InstalledDatabase database(kHousehold);
    const test::MessageRecorder messages;
    clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    profile.ReloadProfile();
    EXPECT_EQ(profile.PropertyCount(), 3U);
    EXPECT_TRUE(messages.messages().empty());
}

TEST(Profile, WithoutARowKeepsItsFields) {
    const test::InstalledDatabase database(kHousehold);
    clsProfile profile;
    profile.ProfileNumber = 99;
    profile.ProfileName = "New";
    profile.ReloadProfile();
    EXPECT_EQ(profile.ProfileName, "New");
    EXPECT_FALSE(profile.Saved);
}

TEST(Profile, ANullNumberOfAPropertyEndsTheLoadInAMessage) {
    const test::InstalledDatabase database(LEDGIX_TEST_DATA "/mdb/household-nulls.mdb");
    const test::MessageRecorder messages;
    clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0], (test::MessageRecorder::Message{"94 - Invalid use of Null", runtime::kOkOnly,
                                                                      "clsProfile-LoadProperties"}));
    EXPECT_EQ(profile.Properties().Keys(), (std::vector<std::string>{"P1-1", "P1-2"}));
    EXPECT_TRUE(profile.Property("P1-1").Saved);
    EXPECT_FALSE(profile.Property("P1-2").Saved);
}

TEST(Profile, AMissingColumnEndsTheReloadInAMessage) {
    const test::InstalledDatabase database(LEDGIX_TEST_DATA "/mdb/household-older.mdb");
    const test::MessageRecorder messages;
    clsProfile profile;
    profile.ProfileNumber = 1;
    profile.ReloadProfile();
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].title, "clsProfiles-ReloadProfile");
    EXPECT_EQ(messages.messages()[0].text.substr(0, 7), "3265 - ");
}

TEST(Profile, ALowerPropertyNumberLeavesTheCounter) {
    clsProfile profile;
    for (std::int32_t number : {9, 4})
        profile.AddProperty(1, number);
    EXPECT_EQ(profile.AddProperty(1).PropertyNumber, 10);
}

TEST(Profile, RunsOutOfPropertyNumbersAt32Bits) {
    clsProfile profile;
    std::int32_t number = std::numeric_limits<std::int32_t>::max();
    profile.AddProperty(1, number);
    EXPECT_ERROR(profile.AddProperty(1), ErrorNumber::kOverflow);
}

}  // namespace
}  // namespace ledgix::model
