#include <gtest/gtest.h>

#include "cls_profiles.h"
#include "database.h"
#include "household_file.h"

namespace ledgix::model {
namespace {

using runtime::Variant;

// This program and another one have the same file open, and both make new records.
class FreeNumber : public testing::Test {
protected:
    FreeNumber() {
        file.Open();
        profiles.Load();
    }

    test::HouseholdFile file{test::UpgradedContent(dao::FileFormat::kJet4)};
    test::MessageRecorder messages;
    clsProfiles profiles;
};

TEST_F(FreeNumber, IsTheProfilesOwnWhenNobodyHasTakenIt) {
    clsProfile& profile = profiles.AddItem();
    profiles.TakeFreeNumber(profile);
    EXPECT_EQ(profile.ProfileNumber, 1);
    EXPECT_EQ(&profiles.Item("P1"), &profile);
}

TEST_F(FreeNumber, IsOneAboveTheHighestWhenAnotherProgramHasTakenTheProfiles) {
    clsProfile& profile = profiles.AddItem();
    profile.ProfileName = "Ours";
    file.Execute("insert into Profiles (ProfileNumber, profile_name) values (1, 'Theirs')");
    file.Execute("insert into Profiles (ProfileNumber, profile_name) values (4, 'Theirs too')");
    profiles.TakeFreeNumber(profile);
    profile.Save();
    EXPECT_EQ(profile.ProfileNumber, 5);
    EXPECT_EQ(&profiles.Item("P5"), &profile);
    EXPECT_EQ(file.Column("select profile_name from Profiles order by ProfileNumber"),
              (std::vector<Variant>{std::string("Theirs"), std::string("Theirs too"), std::string("Ours")}));
    EXPECT_EQ(profiles.AddItem().ProfileNumber, 6);
}

TEST_F(FreeNumber, IsTheSameWhereTheProfilesCannotBeRead) {
    clsProfile& profile = profiles.AddItem();
    file.Execute("insert into Profiles (ProfileNumber, profile_name) values (1, 'Theirs')");
    file.Close();
    profiles.TakeFreeNumber(profile);
    EXPECT_EQ(profile.ProfileNumber, 1);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(FreeNumber, IsOneAboveTheHighestOfThePropertiesOfItsProfile) {
    clsProfile& profile = profiles.AddItem();
    clsProperty& property = profile.AddProperty(1);
    property.PropertyName = "Ours";
    file.Execute("insert into ProfileProperty (ProfileNumber, PropertyNumber, PropertyName) values (1, 1, 'Theirs')");
    file.Execute("insert into ProfileProperty (ProfileNumber, PropertyNumber, PropertyName) values (2, 9, 'Others')");
    profile.TakeFreeNumber(property);
    property.Save();
    EXPECT_EQ(property.PropertyNumber, 2);
    EXPECT_EQ(&profile.Property("P1-2"), &property);
    EXPECT_EQ(file.Column("select PropertyName from ProfileProperty where ProfileNumber = 1 order by PropertyNumber"),
              (std::vector<Variant>{std::string("Theirs"), std::string("Ours")}));
}

TEST_F(FreeNumber, OfThePropertyIsItsOwnWhenNobodyHasTakenIt) {
    clsProfile& profile = profiles.AddItem();
    clsProperty& property = profile.AddProperty(1);
    file.Execute("insert into ProfileProperty (ProfileNumber, PropertyNumber, PropertyName) values (2, 1, 'Others')");
    profile.TakeFreeNumber(property);
    EXPECT_EQ(property.PropertyNumber, 1);
}

}  // namespace
}  // namespace ledgix::model
