#include "record_windows.h"

#include <gtest/gtest.h>

#include "cls_profiles.h"
#include "error_of.h"
#include "household_file.h"
#include "record_windows_recorder.h"

namespace ledgix::model {
namespace {

using Asked = std::vector<std::string>;

class WindowsOfARecord : public testing::Test {
protected:
    WindowsOfARecord() {
        file.Open();
        profiles.Load();
    }

    test::HouseholdFile file{test::SampleContent("household-2000.mdb")};
    test::MessageRecorder messages;
    test::RecordWindowsRecorder windows;
    clsProfiles profiles;
};

TEST(RecordWindows, ThatAreMissingRaiseError91) {
    EXPECT_ERROR(WindowsOfRecords(), runtime::ErrorNumber::kObjectNotSet);
}

TEST_F(WindowsOfARecord, OpenOnceForAProfileAndComeToTheFront) {
    clsProfile& profile = profiles.Item("P1");
    profile.Display();
    EXPECT_EQ(windows.Take(), (Asked{"open P1", "show P1", "front P1"}));
    profile.Display();
    EXPECT_EQ(windows.Take(), (Asked{"show P1", "front P1"}));
    profile.CloseForm();
    EXPECT_EQ(windows.Take(), Asked{"close P1"});
    profile.CloseForm();
    EXPECT_EQ(windows.Take(), Asked{});
}

TEST_F(WindowsOfARecord, LoadThePropertiesOfASavedProfileWhenTheyOpen) {
    clsProfile& profile = profiles.Item("P1");
    ASSERT_EQ(profile.PropertyCount(), 0U);
    profile.Display();
    const std::size_t count = profile.PropertyCount();
    EXPECT_GT(count, 0U);
    profile.AddProperty(1);
    profile.Display();
    EXPECT_EQ(profile.PropertyCount(), count + 1) << "an open editor's list stays as it is";
    profile.CloseForm();
    profile.Display();
    EXPECT_EQ(profile.PropertyCount(), count);
}

TEST_F(WindowsOfARecord, LoadNothingForAProfileThatWasNeverSaved) {
    clsProfile& profile = profiles.AddItem();
    profile.AddProperty(profile.ProfileNumber);
    profile.Display();
    EXPECT_EQ(profile.PropertyCount(), 1U);
    EXPECT_TRUE(messages.messages().empty());
}

TEST_F(WindowsOfARecord, OpenForAPropertyUntilTheyAreClosed) {
    clsProfile& profile = profiles.Item("P1");
    profile.LoadProperties();
    clsProperty& property = profile.Property("P1-1");
    property.Display();
    property.Display();
    property.CloseForm();
    EXPECT_EQ(windows.Take(), (Asked{"open P1-1", "show P1-1", "show P1-1", "close P1-1"}));
}

TEST_F(WindowsOfARecord, RunTheThreeReports) {
    clsProfile& profile = profiles.Item("P1");
    profile.LoadProperties();
    profile.Analyse();
    clsProperty& property = profile.Property("P1-1");
    property.Analysis(profile);
    property.Year10Analysis(profile);
    EXPECT_EQ(windows.Take(), (Asked{"report 0 of P1", "report 1 of P1, P1-1", "report 2 of P1, P1-1"}));
}

TEST_F(WindowsOfARecord, KeepTheWritersOfOpenPreviewsUntilTheEditorCloses) {
    clsProfile& profile = profiles.Item("P1");
    profile.Analyse();
    profile.Analyse();
    EXPECT_EQ(windows.Take(), (Asked{"report 0 of P1", "report 0 of P1"}));
    profile.CloseForm();
    EXPECT_EQ(windows.Take(), (Asked{"end of report", "end of report"}));
}

TEST_F(WindowsOfARecord, ForgetTheWritersOfClosedPreviewsAtTheNextReport) {
    clsProfile& profile = profiles.Item("P1");
    profile.Analyse();
    windows.previews_stay_open = false;
    profile.Analyse();
    EXPECT_EQ(windows.Take(), (Asked{"report 0 of P1", "end of report", "report 0 of P1"}));
}

TEST_F(WindowsOfARecord, AreToldOfChangesOfTheListOfProperties) {
    clsProfile& profile = profiles.Item("P1");
    profile.RaiseReloadProperties();
    int told = 0;
    profile.ReloadProperties = [&] { ++told; };
    profile.RaiseReloadProperties();
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace ledgix::model
