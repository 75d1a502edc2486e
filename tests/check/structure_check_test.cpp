#include "structure_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <tuple>

#include "damage.h"
#include "error_of.h"
#include "new_database.h"
#include "sample_database.h"
#include "specimen.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

using jet::Generation;
using jet::Strictness;

constexpr std::uint32_t kDamagesOfAKind = 60;

std::vector<std::uint8_t> NewFile(Generation generation) {
    return jet::NewDatabase(generation, runtime::Date{38000.5});
}

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
    const std::string content = Content(path.string());
    return {content.begin(), content.end()};
}

std::vector<std::filesystem::path> FilesIn(const std::string& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".mdb")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

class BothGenerations : public testing::TestWithParam<Generation> {};

TEST_P(BothGenerations, HaveNewFilesWithoutAnyFinding) {
    EXPECT_EQ(Lines(Check(NewFile(GetParam()), Strictness::kOwnFiles)), "");
}

TEST_P(BothGenerations, HaveBuiltFilesThatLackOnlyWhatTheBuilderLeavesOut) {
    const Codes jet3{"C10", "H5"};
    const Codes jet4{"C10", "H2", "H5"};
    for (const auto& content : {BuildSampleDatabase(GetParam()), BuildPets(GetParam())}) {
        const std::vector<jet::Finding> findings = Check(content, Strictness::kAnyWriter);
        EXPECT_EQ(CodesOf(findings), GetParam() == Generation::kJet3 ? jet3 : jet4) << Lines(findings);
    }
}

INSTANTIATE_TEST_SUITE_P(StructureCheck, BothGenerations, kBothGenerations, GenerationName);

TEST(StructureCheck, FindsNothingInTheSampleFiles) {
    for (const auto& path : FilesIn(LEDGIX_TEST_DATA "/mdb"))
        EXPECT_EQ(Lines(Check(ReadFile(path), Strictness::kAnyWriter)), "") << path;
}

TEST(StructureCheck, FindsNothingInForeignFiles) {
    const char* folder = std::getenv("LEDGIX_FOREIGN_FILES");
    if (folder == nullptr)
        GTEST_SKIP() << "LEDGIX_FOREIGN_FILES names no folder of .mdb files to check";
    const auto paths = FilesIn(folder);
    EXPECT_FALSE(paths.empty()) << folder << " holds no .mdb file";
    for (const auto& path : paths)
        EXPECT_EQ(Lines(Check(ReadFile(path), Strictness::kAnyWriter)), "") << path;
    std::cout << paths.size() << " files checked\n";
}

struct SoundFile {
    std::string name;
    std::vector<std::uint8_t> content;
};

std::vector<SoundFile> SoundFiles() {
    return {{"new_jet3", NewFile(Generation::kJet3)},
            {"new_jet4", NewFile(Generation::kJet4)},
            {"built_jet3", BuildSampleDatabase(Generation::kJet3)},
            {"built_jet4", BuildSampleDatabase(Generation::kJet4)},
            {"pets_jet3", BuildPets(Generation::kJet3)},
            {"pets_jet4", BuildPets(Generation::kJet4)},
            {"household", ReadFile(LEDGIX_TEST_DATA "/mdb/household-2000.mdb")}};
}

using Case = std::tuple<SoundFile, Damage>;

class DamagedStructure : public testing::TestWithParam<Case> {};

// Nothing but findings, under the sanitizers too, unless the file cannot be opened at all.
TEST_P(DamagedStructure, IsCheckedToTheEnd) {
    const auto& [file, damage] = GetParam();
    std::size_t found = 0;
    const Codes sound = CodesOf(Check(file.content, Strictness::kOwnFiles));
    for (std::uint32_t seed = 0; seed < kDamagesOfAKind; ++seed) {
        SCOPED_TRACE(seed);
        const std::vector<std::uint8_t> content = Damaged(file.content, damage, seed);
        if (ErrorOf([&] { jet::DatabaseFile opened(jet::MakeMemoryFile(content)); }) != 0) {
            ++found;
            continue;
        }
        found += CodesOf(Check(content, Strictness::kOwnFiles)) != sound ? 1 : 0;
    }
    EXPECT_GT(found, kDamagesOfAKind / 10);
}

std::string DamagedCaseName(const testing::TestParamInfo<Case>& info) {
    return std::get<SoundFile>(info.param).name + "_" + DamageName(std::get<Damage>(info.param));
}

INSTANTIATE_TEST_SUITE_P(AllKinds, DamagedStructure,
                         testing::Combine(testing::ValuesIn(SoundFiles()), testing::ValuesIn(kAllDamages)),
                         DamagedCaseName);

}  // namespace

}  // namespace ledgix::test
