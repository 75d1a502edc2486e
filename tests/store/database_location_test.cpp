#include "database_location.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "application_folder.h"
#include "cases.h"
#include "error_of.h"
#include "scoped_environment.h"
#include "temporary_folder.h"
#include "text.h"

namespace ledgix::store {
namespace {

using nlohmann::json;
using test::ErrorOf;

// A computer with some files and settings, and paths of one style.
class Computer {
public:
    explicit Computer(std::string application_folder, char separator) {
        surroundings_.application_folder = std::move(application_folder);
        surroundings_.separator = separator;
        surroundings_.file_exists = [this](const std::string& path) { return Exists(path); };
        surroundings_.setting = [this](const std::string& name, const std::string& fallback) {
            asked_.push_back(name);
            const auto found = settings_.find(name);
            return found == settings_.end() ? fallback : found->second;
        };
    }

    void AddFile(const std::string& path) { files_.push_back(path); }
    void Set(const std::string& name, const std::string& value) { settings_[name] = value; }

    DatabaseLocation Locate() const { return LocateDatabase(surroundings_); }
    // Names of the settings that were read, in order.
    const std::vector<std::string>& asked() const { return asked_; }

private:
    // The path without "folder\..\".
    std::string Resolved(std::string path) const {
        const std::string up = std::string(1, surroundings_.separator) + ".." + surroundings_.separator;
        const std::size_t at = path.find(up);
        if (at == std::string::npos)
            return path;
        const std::size_t folder = path.rfind(surroundings_.separator, at - 1);
        return path.erase(folder, at + up.size() - folder - 1);
    }

    bool Exists(const std::string& path) const {
        return std::any_of(files_.begin(), files_.end(),
                           [&](const std::string& file) { return runtime::EqualsIgnoringCase(file, Resolved(path)); });
    }

    LocationSurroundings surroundings_;
    std::vector<std::string> files_;
    std::map<std::string, std::string> settings_;
    std::vector<std::string> asked_;
};

class DatabaseLocationCase : public testing::TestWithParam<json> {};

TEST_P(DatabaseLocationCase, IsAsListed) {
    const json& wanted = GetParam();
    Computer computer(wanted.at("applicationFolder").get<std::string>(), '\\');
    for (const json& file : wanted.at("files"))
        computer.AddFile(file.get<std::string>());
    for (const char* name : {"Networkable", "DatabaseLocation"}) {
        if (!wanted.at(name).is_null()) {
            const auto stored = wanted.at(name).get<std::string>();
            computer.Set(name, stored == "vbNullString" ? "" : stored);
        }
    }
    if (wanted.contains("error")) {
        EXPECT_EQ(ErrorOf([&] { computer.Locate(); }), wanted.at("error").get<int>());
        return;
    }
    const DatabaseLocation location = computer.Locate();
    EXPECT_EQ(location.path, wanted.at("path").get<std::string>());
    EXPECT_EQ(location.notice, wanted.at("notice").is_null() ? "" : wanted.at("notice").get<std::string>());
}

INSTANTIATE_TEST_SUITE_P(, DatabaseLocationCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("database_location.json"))), test::CaseName);

TEST(DatabaseLocation, UsesThePlatformsSeparator) {
    Computer computer("/opt/ledgix/app", '/');
    computer.AddFile("/opt/ledgix/property.mdb");
    EXPECT_EQ(computer.Locate().path, "/opt/ledgix/app/../Property.mdb");
    computer.Set("Networkable", "1");
    computer.Set("DatabaseLocation", "/srv/gone.mdb");
    EXPECT_EQ(computer.Locate().notice,
              "Unable to access \r\n/srv/gone.mdb\r\nReverting back to \r\n/opt/ledgix/app/property.mdb");
}

TEST(DatabaseLocation, TakesAnEmptySettingForAMissingFile) {
    Computer computer("/opt/app", '/');
    computer.AddFile("");
    computer.Set("Networkable", "1");
    computer.Set("DatabaseLocation", "");
    const DatabaseLocation location = computer.Locate();
    EXPECT_EQ(location.path, "/opt/app/property.mdb");
    EXPECT_EQ(location.notice, "Unable to access \r\n\r\nReverting back to \r\n/opt/app/property.mdb");
}

TEST(DatabaseLocation, IsNotAskedForInLocalMode) {
    Computer computer("/opt/app", '/');
    computer.Set("Networkable", "0");
    computer.Set("DatabaseLocation", "/srv/property.mdb");
    computer.Locate();
    EXPECT_EQ(computer.asked(), std::vector<std::string>{"Networkable"});
}

TEST(DatabaseLocation, FailsOnWhatIsNo16BitNumberBeforeItIsAskedFor) {
    Computer computer("/opt/app", '/');
    computer.Set("Networkable", "on");
    EXPECT_EQ(ErrorOf([&] { computer.Locate(); }), 13);
    computer.Set("Networkable", "32768");
    EXPECT_EQ(ErrorOf([&] { computer.Locate(); }), 6);
    EXPECT_EQ(computer.asked(), (std::vector<std::string>{"Networkable", "Networkable"}));
}

// The program in a folder of its own, with the settings file beside that folder.
class ProgramLocation : public testing::Test {
protected:
    void Settle(const std::string& settings) const {
        folder_.Write("ledgix.reg", "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\n" + settings);
    }
    DatabaseLocation Locate() const { return LocateDatabase(ProgramSurroundings()); }

    const test::TemporaryFolder folder_;
    const std::string app_ = folder_.MakeFolder("app");
    const std::string separator_ = std::string(1, runtime::PathSeparator());
    const test::ScopedEnvironment application_{"LEDGIX_FOLDER", app_};
    const test::ScopedEnvironment settings_{"LEDGIX_SETTINGS", folder_.File("ledgix.reg")};
};

TEST_F(ProgramLocation, IsBesideTheProgramWithoutSettings) {
    EXPECT_EQ(Locate().path, app_ + separator_ + "property.mdb");
}

TEST_F(ProgramLocation, IsTheFolderAboveInAnyCase) {
    folder_.Write("PROPERTY.mdb", "x");
    folder_.Write("app/property.mdb", "x");
    EXPECT_EQ(Locate().path, app_ + separator_ + ".." + separator_ + "Property.mdb");
}

TEST_F(ProgramLocation, IsTheStoredOneInNetworkedMode) {
    const std::string shared = folder_.Write("household.mdb", "x");
    std::string quoted = runtime::ReplaceAll(shared, "\\", "\\\\");
    Settle("\"Networkable\"=dword:00000001\n\"DatabaseLocation\"=\"" + quoted + "\"\n");
    EXPECT_EQ(Locate().path, shared);
    EXPECT_EQ(Locate().notice, "");
}

TEST_F(ProgramLocation, RevertsWhenTheStoredOneIsGone) {
    Settle("\"Networkable\"=\"1\"\n\"DatabaseLocation\"=\"vbNullString\"\n");
    EXPECT_EQ(Locate().path, app_ + separator_ + "property.mdb");
    EXPECT_EQ(Locate().notice.substr(0, 17), "Unable to access ");
}

}  // namespace
}  // namespace ledgix::store
