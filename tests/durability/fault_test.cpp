#include <gtest/gtest.h>

#include <sstream>

#include "cls_profiles.h"
#include "command_messages.h"
#include "commands.h"
#include "database.h"
#include "fault_trial.h"
#include "household_file.h"
#include "request_refused.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::test {

namespace {

std::string NameOf(Fault fault) {
    switch (fault) {
        case Fault::kOnce:
            return "Once";
        case Fault::kStop:
            return "Stop";
        case Fault::kTorn:
            return "Torn";
        default:
            return "Full";
    }
}

std::string CaseNameOf(const testing::TestParamInfo<std::tuple<Fault, dao::FileFormat>>& info) {
    return NameOf(std::get<0>(info.param)) + (std::get<1>(info.param) == dao::FileFormat::kJet3 ? "Jet3" : "Jet4");
}

const auto kAllFaults = testing::Values(Fault::kOnce, Fault::kStop, Fault::kTorn, Fault::kFull);

// Stores profile 7 by the record itself.
std::string SaveProfile() {
    model::clsProfile profile;
    profile.ProfileNumber = 7;
    profile.ReloadProfile();
    profile.ProfileName = "Marcus O'Leary";
    profile.IncSalary = 46800;
    profile.Save();
    return {};
}

std::string SaveProperty() {
    model::clsProfile profile;
    profile.ProfileNumber = 7;
    std::int32_t number = 3;
    model::clsProperty& property = profile.AddProperty(7, number);
    property.PropertyName = "Unit 3, 88 Kowhai Road";
    property.PurchasePrice = 189500;
    property.Save();
    return {};
}

std::string DeleteProfile() {
    model::clsProfile profile;
    profile.ProfileNumber = 7;
    profile.Delete();
    return {};
}

std::string UpgradeTables() {
    store::UpgradeSchema([] {});
    return {};
}

std::string Upgrade() {
    store::UpgradeSchema(model::CheckDefaultTaxRates);
    model::TaxRatesSeeded = false;
    return {};
}

// A file of the current layout after a change.
std::string ContentAfter(const std::string& content, const DatabaseChange& change) {
    const HouseholdFile file(content);
    file.Open();
    change();
    file.Close();
    return file.bytes();
}

// With profile 7 and others, enough for several pages.
std::string StoredHousehold(dao::FileFormat format) {
    return ContentAfter(UpgradedContent(format), [] {
        for (std::int32_t number = 1; number <= 30; ++number) {
            model::clsProfile profile;
            profile.ProfileNumber = number;
            profile.ProfileName = "Profile " + std::to_string(number);
            profile.Save();
        }
        return std::string();
    });
}

class FaultAnywhere : public testing::TestWithParam<std::tuple<Fault, dao::FileFormat>> {
protected:
    Fault fault() const { return std::get<0>(GetParam()); }
    dao::FileFormat format() const { return std::get<1>(GetParam()); }
};

TEST_P(FaultAnywhere, WhileAStoredProfileIsSavedLeavesItOldOrNew) {
    FailAtEveryOperation({.content = StoredHousehold(format()), .change = SaveProfile}, fault());
}

TEST_P(FaultAnywhere, WhileANewProfileIsSavedLeavesItMissingOrWhole) {
    FailAtEveryOperation({.content = UpgradedContent(format()), .change = SaveProfile}, fault());
}

TEST_P(FaultAnywhere, WhileANewPropertyIsSavedLeavesItMissingOrWhole) {
    FailAtEveryOperation({.content = StoredHousehold(format()), .change = SaveProperty}, fault());
}

TEST_P(FaultAnywhere, WhileAStoredPropertyIsSavedLeavesItOldOrNew) {
    const std::string content = ContentAfter(ContentAfter(StoredHousehold(format()), SaveProperty), [] {
        std::string sql = "update ProfileProperty set PropertyName = 'x', PurchasePrice = 1";
        store::ExecuteSQL(sql);
        return std::string();
    });
    FailAtEveryOperation({.content = content, .change = SaveProperty}, fault());
}

TEST_P(FaultAnywhere, WhileAProfileIsDeletedLeavesItWholeOrGone) {
    FailAtEveryOperation({.content = StoredHousehold(format()), .change = DeleteProfile}, fault());
}

TEST_P(FaultAnywhere, WhileANewFileIsBroughtUpToDateLeavesNoHalfATable) {
    const std::string content = EmptyContent(format());
    FailAtEveryOperation({.content = content,
                          .change = Upgrade,
                          .between = {StateAfter(content, UpgradeTables)},
                          .says_when_full = false},
                         fault());
}

INSTANTIATE_TEST_SUITE_P(Records, FaultAnywhere, testing::Combine(kAllFaults, testing::ValuesIn(kBothFormats)),
                         CaseNameOf);

class FaultInASample : public testing::TestWithParam<Fault> {};

TEST_P(FaultInASample, WhileAnOlderFileIsBroughtUpToDateLeavesItOldOrNew) {
    FailAtEveryOperation({.content = SampleContent("household-older.mdb"), .change = Upgrade, .says_when_full = false},
                         GetParam());
}

TEST_P(FaultInASample, WhileAStoredProfileIsSavedLeavesItOldOrNew) {
    const DatabaseChange save = [] {
        model::clsProfiles profiles;
        profiles.Load();
        profiles.Item("P4").AssCash = 17;
        profiles.Item("P4").Save();
        return std::string();
    };
    FailAtEveryOperation({.content = SampleContent("household-2000.mdb"), .change = save}, GetParam());
}

// What is in the file already is refused, which is what a second try comes to.
std::string Import() {
    std::ostringstream out;
    std::ostringstream err;
    const cli::CommandMessages messages(err);
    try {
        cli::ImportContent(*store::gDatabase, LEDGIX_TEST_DATA "/mdb/household.json", messages, out);
    } catch (const runtime::RuntimeError& error) {
        err << error.what();
    } catch (const cli::RequestRefused& refusal) {
        err << refusal.what();
    }
    return err.str();
}

TEST_P(FaultInASample, WhileAHouseholdIsImportedLeavesAllOfItOrNothing) {
    FailAtEveryOperation({.content = UpgradedContent(dao::FileFormat::kJet4), .change = Import}, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Samples, FaultInASample, kAllFaults, [](const auto& param) { return NameOf(param.param); });

class FaultForGood : public testing::TestWithParam<Fault> {};

TEST_P(FaultForGood, WhileAProfileTakesANumberAnewLeavesAStateBetweenClearingAndSaving) {
    const std::string content = ContentAfter(UpgradedContent(dao::FileFormat::kJet4), SaveProperty);
    const DatabaseChange clear = [] {
        std::string sql = "delete from ProfileProperty";
        store::ExecuteSQL(sql);
        return std::string();
    };
    FailAtEveryOperation({.content = content, .change = SaveProfile, .between = {StateAfter(content, clear)}},
                         GetParam());
}

INSTANTIATE_TEST_SUITE_P(Records, FaultForGood, testing::Values(Fault::kStop, Fault::kTorn, Fault::kFull),
                         [](const auto& param) { return NameOf(param.param); });

}  // namespace

}  // namespace ledgix::test
