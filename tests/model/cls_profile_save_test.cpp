#include <gtest/gtest.h>

#include <span>

#include "cases.h"
#include "cls_profiles.h"
#include "database.h"
#include "date_time.h"
#include "error_of.h"
#include "fixed_clock.h"
#include "household_builder.h"
#include "household_file.h"

namespace ledgix::model {
namespace {

using runtime::ErrorNumber;
using runtime::Variant;
using test::Json;
using Message = test::MessageRecorder::Message;
using Values = std::vector<Variant>;

constexpr std::span<const ProfileAmount> kAllAmounts[]{kIncomeAmounts, kExpenseAmounts, kAssetAmounts,
                                                       kLiabilityAmounts};

// Gives every amount another value.
void FillAmounts(clsProfile& profile) {
    double next = 100.25;
    for (const auto amounts : kAllAmounts)
        for (const ProfileAmount& amount : amounts)
            profile.*amount.member = next++;
}

void ExpectSameAmounts(const clsProfile& profile, const clsProfile& wanted) {
    for (const auto amounts : kAllAmounts)
        for (const ProfileAmount& amount : amounts)
            EXPECT_EQ(profile.*amount.member, wanted.*amount.member) << amount.column;
}

// A household's file with the primary keys: profiles 1, 2 and 4.
class SavedProfile : public testing::Test {
protected:
    SavedProfile() { file.Open(); }

    clsProfile Stored(std::int32_t number) const {
        clsProfile profile;
        profile.ProfileNumber = number;
        profile.ReloadProfile();
        return profile;
    }
    Values Numbers() const { return file.Column("select ProfileNumber from Profiles order by ProfileNumber"); }
    Values Properties(std::int32_t profile) const {
        return file.Column("select PropertyNumber from ProfileProperty where ProfileNumber = " +
                           std::to_string(profile) + " order by PropertyNumber");
    }
    void Leave(std::int32_t profile, std::int32_t property) const {
        file.Execute("insert into ProfileProperty (ProfileNumber, PropertyNumber) values (" + std::to_string(profile) +
                     ", " + std::to_string(property) + ")");
    }

    test::FixedClock clock{{2026, 11, 7, 9, 5, 3}};
    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::MessageRecorder messages;
    test::DiagnosisRecorder diagnoses;
};

TEST_F(SavedProfile, ReadsBackWithEveryField) {
    clsProfile profile = Stored(2);
    FillAmounts(profile);
    profile.ProfileName = "Joana Brandão";
    profile.Save();
    const clsProfile read = Stored(2);
    ExpectSameAmounts(read, profile);
    EXPECT_EQ(read.ProfileName, "Joana Brandão");
    EXPECT_EQ(Numbers(), (Values{1, 2, 4}));
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(SavedProfile, LeavesTheOthersAsTheyAre) {
    const auto before = file.Rows("select * from Profiles where ProfileNumber <> 2");
    clsProfile profile = Stored(2);
    FillAmounts(profile);
    profile.Save();
    EXPECT_EQ(file.Rows("select * from Profiles where ProfileNumber <> 2"), before);
}

TEST_F(SavedProfile, BearsTheTimeOfSavingInTheFileAndInMemory) {
    clsProfile profile = Stored(1);
    profile.Save();
    EXPECT_EQ(runtime::ToIso8601(profile.LastModified), "2026-11-07T09:05:03");
    EXPECT_EQ(file.Column("select last_modified from Profiles where ProfileNumber = 1"), Values{profile.LastModified});
    clock.Set({2027, 1, 2, 3, 4, 5});
    profile.Save();
    EXPECT_EQ(runtime::ToIso8601(Stored(1).LastModified), "2027-01-02T03:04:05");
}

TEST_F(SavedProfile, ThatIsNewGainsARow) {
    clsProfiles profiles;
    profiles.Load();
    clsProfile& profile = profiles.AddItem();
    FillAmounts(profile);
    profile.ProfileName = "New";
    EXPECT_FALSE(profile.Saved);
    profile.Save();
    EXPECT_TRUE(profile.Saved);
    EXPECT_EQ(Numbers(), (Values{1, 2, 4, 5}));
    ExpectSameAmounts(Stored(5), profile);
    profile.Save();
    EXPECT_EQ(Numbers(), (Values{1, 2, 4, 5}));
}

TEST_F(SavedProfile, MayHaveAnyName) {
    clsProfile profile = Stored(1);
    const std::string fifty(50, 'x');
    for (const std::string& name : {std::string("Marcus O'Leary"), std::string("''"), std::string("it is true & false"),
                                    std::string(), std::string("Zoë \"Z\" 王"), fifty}) {
        profile.ProfileName = name;
        profile.Save();
        EXPECT_EQ(Stored(1).ProfileName, name);
    }
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(SavedProfile, WithANameThatIsTooLongShowsOneMessageAndSavesAllTheRest) {
    clsProfile profile = Stored(1);
    const std::string name_before = profile.ProfileName;
    FillAmounts(profile);
    profile.ProfileName = std::string(51, 'x');
    profile.Save();
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].text.substr(0, 7), "3163 - ");
    EXPECT_EQ(messages.messages()[0].title, "clsProfile-Save");
    EXPECT_EQ(messages.messages()[0].style, runtime::kOkOnly);
    const clsProfile read = Stored(1);
    EXPECT_EQ(read.ProfileName, name_before);
    EXPECT_EQ(runtime::ToIso8601(read.LastModified), "2026-11-07T09:05:03");
    ExpectSameAmounts(read, profile);
    EXPECT_EQ(profile.ProfileName, std::string(51, 'x'));
}

TEST_F(SavedProfile, ThatIsNewWithANameThatIsTooLongIsSavedWithoutOne) {
    clsProfile profile;
    profile.ProfileNumber = 7;
    profile.ProfileName = std::string(51, 'x');
    profile.IncSalary = 5;
    profile.Save();
    EXPECT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(file.Rows("select profile_name, IncSalary from Profiles where ProfileNumber = 7"),
              (std::vector<Values>{{runtime::Null{}, 5.0}}));
}

TEST_F(SavedProfile, OfNumber0IsARowThatASecondOneCanNotJoin) {
    clsProfile profile;
    profile.Save();
    EXPECT_TRUE(messages.messages().empty());
    EXPECT_EQ(Numbers(), (Values{0, 1, 2, 4}));
    profile.Save();
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].text.substr(0, 7), "3022 - ");
    EXPECT_EQ(messages.messages()[0].title, "clsProfile-Save");
    EXPECT_EQ(Numbers(), (Values{0, 1, 2, 4}));
}

TEST_F(SavedProfile, WithoutADatabaseShowsAMessageForEveryStatement) {
    file.Close();
    clsProfile profile;
    profile.ProfileNumber = 3;
    profile.Save();
    // The opening; AddNew, the number, the name, 26 amounts, the time and Update.
    ASSERT_EQ(messages.messages().size(), 1U + 31U);
    EXPECT_EQ(messages.messages()[0].text.substr(0, 24), "General Errors...\r\n\r\n91 ");
    for (std::size_t i = 1; i < messages.messages().size(); ++i) {
        EXPECT_EQ(messages.messages()[i].text.substr(0, 5), "91 - ");
        EXPECT_EQ(messages.messages()[i].title, "clsProfile-Save");
    }
}

TEST_F(SavedProfile, OfAReadOnlyFileChangesNothing) {
    clsProfile profile = Stored(1);
    const std::string before = file.bytes();
    file.OpenReadOnly();
    profile.IncSalary += 1;
    profile.Save();
    EXPECT_FALSE(messages.messages().empty());
    EXPECT_EQ(file.bytes(), before);
}

TEST_F(SavedProfile, ThatIsNewTakesOverNoPropertiesOfAFormerOneWithItsNumber) {
    Leave(7, 1);
    Leave(7, 2);
    const auto others_before = file.Rows("select * from ProfileProperty where ProfileNumber <> 7");
    clsProfile profile;
    profile.ProfileNumber = 7;
    profile.Save();
    EXPECT_EQ(Properties(7), Values{});
    EXPECT_EQ(file.Rows("select * from ProfileProperty where ProfileNumber <> 7"), others_before);
}

TEST_F(SavedProfile, ThatIsNewKeepsItsOwnPropertiesThatWereSavedBefore) {
    Leave(7, 9);
    Leave(7, 3);
    clsProfile profile;
    profile.ProfileNumber = 7;
    profile.AddProperty(7).Save();
    profile.AddProperty(7).Save();
    profile.AddProperty(7);  // not saved; a former one's row bears its number
    profile.Save();
    EXPECT_EQ(Properties(7), (Values{1, 2}));
    profile.Property("P7-3").Save();
    profile.Save();
    EXPECT_EQ(Properties(7), (Values{1, 2, 3}));
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(SavedProfile, ThatIsStoredKeepsAllItsProperties) {
    const Values before = Properties(1);
    ASSERT_EQ(before.size(), 3U);
    clsProfiles profiles;
    profiles.Load();
    profiles.Item("P1").Save();
    EXPECT_EQ(Properties(1), before);
}

TEST_F(SavedProfile, ThatFindsARowOfItsNumberLeavesItsProperties) {
    file.Execute("insert into Profiles (ProfileNumber) values (0)");
    for (const std::int32_t number : {1, 0}) {
        Leave(number, 50);
        const Values before = Properties(number);
        clsProfile profile;
        profile.ProfileNumber = number;
        profile.Save();
        EXPECT_EQ(Properties(number), before) << number;
    }
}

TEST_F(SavedProfile, WithAPropertyRemovedLosesItsRowOnly) {
    clsProfile profile = Stored(1);
    profile.RemoveProperty("P1-2");
    EXPECT_EQ(Properties(1), (Values{1, 3}));
    profile.RemoveProperty(std::size_t{1});
    EXPECT_EQ(Properties(1), Values{3});
    EXPECT_EQ(profile.Properties().Keys(), std::vector<std::string>{"P1-3"});
    EXPECT_EQ(Properties(4), (Values{1, 3}));
    EXPECT_EQ(Numbers(), (Values{1, 2, 4}));
}

TEST_F(SavedProfile, RemovesNoPropertyThatItDoesNotHold) {
    clsProfile profile = Stored(1);
    const std::string before = file.bytes();
    EXPECT_ERROR(profile.RemoveProperty("P4-1"), ErrorNumber::kInvalidArgument);
    EXPECT_ERROR(profile.RemoveProperty(std::size_t{0}), ErrorNumber::kSubscript);
    EXPECT_ERROR(profile.RemoveProperty(std::size_t{4}), ErrorNumber::kSubscript);
    EXPECT_EQ(file.bytes(), before);
    EXPECT_EQ(profile.PropertyCount(), 3U);
}

TEST_F(SavedProfile, ThatWasChangedElsewhereIsReadAfreshByReloading) {
    clsProfile profile = Stored(1);
    file.Execute("update Profiles set IncSalary = 77 where ProfileNumber = 1");
    file.Execute("delete from ProfileProperty where ProfileNumber = 1 and PropertyNumber = 2");
    profile.ReloadProfile();
    EXPECT_EQ(profile.IncSalary, 77);
    EXPECT_EQ(profile.Properties().Keys(), (std::vector<std::string>{"P1-1", "P1-3"}));
    EXPECT_EQ(profile.AddProperty(1).PropertyNumber, 4);
}

class SaveAddsRow : public testing::TestWithParam<Json> {};

TEST_P(SaveAddsRow, OrChangesTheOneThatIsThere) {
    const auto number = GetParam().at("number").get<std::int32_t>();
    const bool is_profile = GetParam().at("record") == "profile";
    test::HouseholdBuilder builder;
    if (GetParam().at("rowExists").get<bool>()) {
        if (is_profile)
            builder.AddProfile(number, Json::object());
        else
            builder.AddProperty(8, number, Json::object());
    }
    const test::InstalledDatabase database(builder.Finish());
    const test::MessageRecorder messages;
    const std::string table = is_profile ? "Profiles" : "ProfileProperty";
    const std::size_t before = store::gDatabase->CountRows(table);
    clsProfile profile;
    profile.ProfileNumber = number;
    clsProperty property;
    property.ProfileNumber = 8;
    property.PropertyNumber = number;
    if (is_profile)
        profile.Save();
    else
        property.Save();
    EXPECT_EQ(store::gDatabase->CountRows(table) - before, GetParam().at("adds").get<bool>() ? 1U : 0U);
    EXPECT_TRUE(messages.messages().empty());
}

INSTANTIATE_TEST_SUITE_P(Numbering, SaveAddsRow,
                         testing::ValuesIn(test::CaseList(test::LoadCases("numbering.json").at("saveAddsRow"))),
                         test::CaseName);

// Deleting a record does what its statement does, run by another program.
class DeleteStatement : public testing::TestWithParam<Json> {};

TEST_P(DeleteStatement, RemovesTheRowsThatBearTheNumbers) {
    const auto content = test::HouseholdBuilder()
                             .AddProfile(12, Json::object())
                             .AddProfile(3, Json::object())
                             .AddProperty(3, 7, Json::object())
                             .AddProperty(3, 8, Json::object())
                             .AddProperty(12, 7, Json::object())
                             .Finish();
    const test::HouseholdFile deleted(content);
    const test::HouseholdFile executed(content);
    deleted.Open();
    const auto profile_number = GetParam().at("ProfileNumber").get<std::int32_t>();
    if (GetParam().contains("PropertyNumber")) {
        clsProperty property;
        property.ProfileNumber = profile_number;
        property.PropertyNumber = GetParam().at("PropertyNumber").get<std::int32_t>();
        property.Delete();
    } else {
        clsProfile profile;
        profile.ProfileNumber = profile_number;
        profile.Delete();
    }
    EXPECT_EQ(executed.Execute(GetParam().at("statement").get<std::string>()), 1U);
    for (const char* table : {"select * from Profiles", "select * from ProfileProperty"})
        EXPECT_EQ(deleted.Rows(table), executed.Rows(table));
}

INSTANTIATE_TEST_SUITE_P(Numbering, DeleteStatement,
                         testing::ValuesIn(test::CaseList(test::LoadCases("numbering.json").at("deleteStatements"))),
                         test::CaseName);

}  // namespace
}  // namespace ledgix::model
