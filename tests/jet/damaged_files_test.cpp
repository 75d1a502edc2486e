#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "damage.h"
#include "read_everything.h"
#include "sample_database.h"
#include "table_rows.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

constexpr std::uint32_t kDamagesOfAKind = 200;

// A sample file, or one of our own making.
struct SoundFile {
    std::string name;
    std::vector<std::uint8_t> content;
};

std::vector<SoundFile> SoundFiles() {
    std::vector<SoundFile> files;
    for (const std::string& path : SampleFiles()) {
        const std::string content = Content(path);
        files.push_back({.name = path.substr(path.find_last_of('/') + 1), .content = {content.begin(), content.end()}});
    }
    files.push_back({.name = "built_jet3", .content = BuildSampleDatabase(jet::Generation::kJet3)});
    files.push_back({.name = "built_jet4", .content = BuildSampleDatabase(jet::Generation::kJet4)});
    return files;
}

using Case = std::tuple<SoundFile, Damage>;

std::string DamagedCaseName(const testing::TestParamInfo<Case>& info) {
    const std::string& file = std::get<SoundFile>(info.param).name;
    std::string name = file.substr(0, file.find('.')) + "_" + DamageName(std::get<Damage>(info.param));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class DamagedFile : public testing::TestWithParam<Case> {};

// Nothing but results and errors of the engine, under the sanitizers too; and what is read of a table stays in
// proportion to the file.
TEST_P(DamagedFile, IsReadOrRefused) {
    const auto& [file, damage] = GetParam();
    std::size_t refused = 0;
    for (std::uint32_t seed = 0; seed < kDamagesOfAKind; ++seed) {
        SCOPED_TRACE(seed);
        std::vector<std::uint8_t> content = Damaged(file.content, damage, seed);
        const std::size_t size = content.size();
        const Everything everything = ReadEverything(std::move(content));
        refused += everything.errors > 0 ? 1 : 0;
        EXPECT_LE(everything.longest_table, 4 * size);
    }
    EXPECT_GT(refused, 0U);
}

INSTANTIATE_TEST_SUITE_P(AllKinds, DamagedFile,
                         testing::Combine(testing::ValuesIn(SoundFiles()), testing::ValuesIn(kAllDamages)),
                         DamagedCaseName);

TEST(SoundFile, IsReadWithoutAnyError) {
    for (const SoundFile& file : SoundFiles()) {
        const Everything everything = ReadEverything(file.content);
        EXPECT_EQ(everything.errors, 0U) << file.name;
        EXPECT_GE(everything.tables, 5U) << file.name;
    }
}

// Seeds of the fuzz target, and what it found before.
TEST(FuzzCorpus, IsReadOrRefused) {
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(LEDGIX_SOURCE "/fuzz/corpus")) {
        const std::string content = Content(entry.path().string());
        EXPECT_NO_THROW(ReadEverything({content.begin(), content.end()})) << entry.path();
        ++files;
    }
    EXPECT_GE(files, 2U);
}

}  // namespace

}  // namespace ledgix::test
