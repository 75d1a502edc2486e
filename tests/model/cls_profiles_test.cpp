#include "cls_profiles.h"

#include <gtest/gtest.h>

#include <limits>

#include "cases.h"
#include "error_of.h"
#include "household_builder.h"
#include "household_file.h"
#include "message_recorder.h"

namespace ledgix::model {
namespace {

using runtime::ErrorNumber;
using test::Json;

std::vector<std::uint8_t> ProfilesContent(const std::vector<std::int32_t>& numbers) {
    test::HouseholdBuilder builder;
    for (const std::int32_t number : numbers)
        builder.AddProfile(number, Json::object());
    return builder.Finish();
}

class ProfileNumbering : public testing::TestWithParam<Json> {};

TEST_P(ProfileNumbering, FollowsTheHighestNumberSeen) {
    const test::InstalledDatabase database(ProfilesContent(GetParam().at("profileRows")));
    const test::MessageRecorder messages;
    clsProfiles profiles;
    profiles.Load();
    EXPECT_EQ(profiles.Profiles().Keys(), GetParam().at("keysAfterLoad").get<std::vector<std::string>>());
    ASSERT_EQ(messages.messages().size(), GetParam().at("loadError").is_null() ? 0U : 1U);
    if (!messages.messages().empty()) {
        const std::string number = std::to_string(GetParam().at("loadError").get<int>());
        EXPECT_EQ(messages.messages()[0].text.substr(0, number.size() + 3), number + " - ");
        EXPECT_EQ(messages.messages()[0].title, "clsProfiles-Load");
        EXPECT_EQ(messages.messages()[0].style, runtime::kOkOnly);
    }
    std::int32_t number = -1;
    profiles.AddItem(number);
    EXPECT_EQ(number, GetParam().at("newNumber").get<std::int32_t>());
    const std::size_t held = profiles.Count();
    profiles.Remove("P" + std::to_string(number));
    EXPECT_EQ(profiles.Count(), held - 1);
    EXPECT_EQ(profiles.AddItem().ProfileNumber, GetParam().at("newNumberAfterDeletingIt").get<std::int32_t>());
}

INSTANTIATE_TEST_SUITE_P(Numbering, ProfileNumbering,
                         testing::ValuesIn(test::CaseList(test::LoadCases("numbering.json").at("profiles"))),
                         test::CaseName);

TEST(Profiles, OfAnEmptyTableAreNone) {
    const test::InstalledDatabase database(ProfilesContent({}));
    clsProfiles profiles;
    profiles.Load();
    EXPECT_EQ(profiles.Count(), 0U);
    EXPECT_EQ(profiles.AddItem().ProfileNumber, 1);
}

TEST(Profiles, AreFoundByPositionAndKey) {
    const test::InstalledDatabase database(ProfilesContent({5, 2}));
    clsProfiles profiles;
    profiles.Load();
    EXPECT_EQ(profiles.Item(1).ProfileNumber, 5);
    EXPECT_EQ(profiles.Item("P2").ProfileNumber, 2);
    EXPECT_EQ(profiles.Item("p2").ProfileNumber, 2);
    EXPECT_ERROR(profiles.Item(3), ErrorNumber::kSubscript);
    EXPECT_ERROR(profiles.Item(std::size_t{0}), ErrorNumber::kSubscript);
    EXPECT_ERROR(profiles.Item("P3"), ErrorNumber::kInvalidArgument);
}

TEST(Profiles, LoadedAreSavedAndNewOnesAreNot) {
    const test::InstalledDatabase database(ProfilesContent({5}));
    clsProfiles profiles;
    profiles.Load();
    EXPECT_TRUE(profiles.Item(1).Saved);
    EXPECT_FALSE(profiles.AddItem().Saved);
}

TEST(Profiles, LoadedAgainReplaceTheOldOnesAndKeepTheHighestNumber) {
    clsProfiles profiles;
    {
        const test::InstalledDatabase database(ProfilesContent({9}));
        profiles.Load();
    }
    const test::InstalledDatabase database(ProfilesContent({1, 2}));
    profiles.Load();
    EXPECT_EQ(profiles.Profiles().Keys(), (std::vector<std::string>{"P1", "P2"}));
    EXPECT_EQ(profiles.AddItem().ProfileNumber, 10);
}

TEST(Profiles, TakeALowerNumberAsItIs) {
    clsProfiles profiles;
    std::int32_t number = 7;
    profiles.AddItem(number);
    number = 3;
    profiles.AddItem(number);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(profiles.AddItem().ProfileNumber, 8);
}

TEST(Profiles, RefuseANumberThatTheyHold) {
    clsProfiles profiles;
    std::int32_t number = 7;
    profiles.AddItem(number);
    EXPECT_ERROR(profiles.AddItem(number), ErrorNumber::kDuplicateKey);
    EXPECT_EQ(profiles.Count(), 1U);
}

TEST(Profiles, RunOutOfNumbersAt32Bits) {
    clsProfiles profiles;
    std::int32_t number = std::numeric_limits<std::int32_t>::max();
    profiles.AddItem(number);
    EXPECT_ERROR(profiles.AddItem(), ErrorNumber::kOverflow);
}

class RemovedProfiles : public testing::Test {
protected:
    RemovedProfiles() {
        file.Open();
        profiles.Load();
    }

    std::vector<runtime::Variant> Numbers(const std::string& table) const {
        return file.Column("select ProfileNumber from " + table + " order by ProfileNumber");
    }

    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::MessageRecorder messages;
    clsProfiles profiles;
};

TEST_F(RemovedProfiles, LoseTheirRowAndNoOtherDoes) {
    const auto properties_before = file.Rows("select * from ProfileProperty");
    profiles.Remove("P2");
    EXPECT_EQ(profiles.Profiles().Keys(), (std::vector<std::string>{"P1", "P4"}));
    EXPECT_EQ(Numbers("Profiles"), (std::vector<runtime::Variant>{1, 4}));
    EXPECT_EQ(file.Rows("select * from ProfileProperty"), properties_before);
}

TEST_F(RemovedProfiles, GoByPositionToo) {
    profiles.Remove(std::size_t{1});
    EXPECT_EQ(Numbers("Profiles"), (std::vector<runtime::Variant>{2, 4}));
    EXPECT_EQ(profiles.Item(std::size_t{1}).ProfileNumber, 2);
}

TEST_F(RemovedProfiles, LeaveTheirProperties) {
    const std::size_t before = Numbers("ProfileProperty").size();
    profiles.Remove("P4");
    EXPECT_EQ(Numbers("ProfileProperty").size(), before);
}

TEST_F(RemovedProfiles, AreNotThoseThatAreNotHeld) {
    const std::string before = file.bytes();
    EXPECT_ERROR(profiles.Remove("P9"), ErrorNumber::kInvalidArgument);
    EXPECT_ERROR(profiles.Remove(std::size_t{0}), ErrorNumber::kSubscript);
    EXPECT_ERROR(profiles.Remove(std::size_t{4}), ErrorNumber::kSubscript);
    EXPECT_EQ(file.bytes(), before);
    EXPECT_EQ(profiles.Count(), 3U);
}

TEST_F(RemovedProfiles, ThatWereNeverSavedAreForgotten) {
    const std::string before = file.bytes();
    profiles.AddItem();
    profiles.Remove("P5");
    EXPECT_EQ(file.bytes(), before);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(RemovedProfiles, AreGoneAtTheNextLoad) {
    profiles.Remove("P1");
    clsProfiles next_start;
    next_start.Load();
    EXPECT_EQ(next_start.Profiles().Keys(), (std::vector<std::string>{"P2", "P4"}));
}

TEST(Profiles, DoNotLoadProperties) {
    const test::InstalledDatabase database(LEDGIX_TEST_DATA "/mdb/household-2000.mdb");
    clsProfiles profiles;
    profiles.Load();
    ASSERT_EQ(profiles.Count(), 3U);
    EXPECT_EQ(profiles.Item("P1").PropertyCount(), 0U);
}

}  // namespace
}  // namespace ledgix::model
