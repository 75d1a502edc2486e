#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "cls_profile.h"
#include "database.h"
#include "fault_trial.h"
#include "household_file.h"
#include "process.h"
#include "schema_upgrade.h"
#include "tax_module.h"

namespace ledgix::test {

namespace {

using runtime::Variant;

// A disk of so many bytes in a folder, where the system and the user's rights allow one.
class SmallDisk {
public:
    explicit SmallDisk(std::size_t bytes) : path_(folder_.MakeFolder("small")) {
        mounted_ = ExitStatus("mount -t tmpfs -o size=" + std::to_string(bytes) + " tmpfs '" + path_ + "'") == 0;
    }
    ~SmallDisk() {
        store::gDatabase.reset();
        if (mounted_)
            ExitStatus("umount '" + path_ + "'");
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted() const { return mounted_; }
    std::string Write(const std::string& name, const std::string& content) const {
        return folder_.Write("small/" + name, content);
    }

private:
    TemporaryFolder folder_;
    ScopedEnvironment application_{"LEDGIX_FOLDER", folder_.path()};
    std::string path_;
    bool mounted_ = false;
};

constexpr char kNoDisk[] = "no small disk can be mounted: that takes Linux and root";
constexpr std::size_t kRoom = 120000;

class FullDisk : public testing::TestWithParam<dao::FileFormat> {
protected:
    // The number of the first profile that is not saved.
    std::int32_t SaveUntilFull() {
        for (std::int32_t number = 1;; ++number) {
            model::clsProfile profile;
            profile.ProfileNumber = number;
            profile.ProfileName = std::string(50, 'p');
            profile.Save();
            if (!messages.messages().empty())
                return number;
        }
    }

    static void ExpectProfilesBelow(const std::string& path, std::int32_t end) {
        const auto database = dao::DefaultWorkspace().OpenDatabase(path);
        const auto rows = database->OpenRecordset("select ProfileNumber from Profiles order by ProfileNumber");
        std::int32_t number = 1;
        for (; !rows->Eof(); rows->MoveNext())
            EXPECT_EQ((*rows)["ProfileNumber"], Variant(number++));
        EXPECT_EQ(number, end);
    }

    MessageRecorder messages;
    DiagnosisRecorder diagnoses;
};

TEST_P(FullDisk, FailsASaveWith3026AndKeepsAllThatWasSaved) {
    const std::string content = UpgradedContent(GetParam());
    const SmallDisk disk(content.size() + kRoom);
    if (!disk.mounted())
        GTEST_SKIP() << kNoDisk;
    const std::string path = disk.Write("property.mdb", content);
    store::OpenDatabaseFile(path);
    const std::int32_t failed = SaveUntilFull();
    EXPECT_GT(failed, 10);
    ASSERT_EQ(messages.messages().size(), 1U);
    EXPECT_EQ(messages.messages()[0].text.substr(0, 7), "3026 - ");
    EXPECT_EQ(messages.messages()[0].title, "clsProfile-Save");
    EXPECT_EQ(store::gDatabase->CountRows("Profiles"), static_cast<std::size_t>(failed - 1));
    store::gDatabase.reset();
    EXPECT_FALSE(std::filesystem::exists(path + ".journal"));
    ExpectProfilesBelow(path, failed);
    EXPECT_EQ(FindingsIn(path), "");
}

TEST_P(FullDisk, TakesSavesAgainOnceThereIsRoom) {
    const std::string content = UpgradedContent(GetParam());
    const SmallDisk disk(content.size() + 3 * kRoom);
    if (!disk.mounted())
        GTEST_SKIP() << kNoDisk;
    const std::string path = disk.Write("property.mdb", content);
    const std::string other = disk.Write("other", std::string(2 * kRoom, 'x'));
    store::OpenDatabaseFile(path);
    const std::int32_t failed = SaveUntilFull();
    std::filesystem::remove(other);
    messages.Clear();
    model::clsProfile profile;
    profile.ProfileNumber = failed;
    profile.Save();
    EXPECT_TRUE(messages.messages().empty());
    store::gDatabase.reset();
    ExpectProfilesBelow(path, failed + 1);
    EXPECT_EQ(FindingsIn(path), "");
}

TEST_P(FullDisk, LeavesANewFileAsItIsWhenItCanNotBeBroughtUpToDate) {
    const std::string content = EmptyContent(GetParam());
    const SmallDisk disk(content.size() + 4096);
    if (!disk.mounted())
        GTEST_SKIP() << kNoDisk;
    const std::string path = disk.Write("property.mdb", content);
    store::OpenDatabaseFile(path);
    store::UpgradeSchema(model::CheckDefaultTaxRates);
    EXPECT_EQ(messages.messages().back().text,
              "The database was not updated successfully.  Try restarting this application.");
    EXPECT_FALSE(model::TaxRatesSeeded);
    store::gDatabase.reset();
    EXPECT_EQ(Content(path), content);
}

INSTANTIATE_TEST_SUITE_P(Formats, FullDisk, testing::ValuesIn(kBothFormats), FormatName);

}  // namespace

}  // namespace ledgix::test
