#include "application_folder.h"

#include <gtest/gtest.h>

#include "files.h"
#include "scoped_environment.h"
#include "temporary_folder.h"

namespace ledgix::runtime {
namespace {

using test::ScopedEnvironment;

TEST(ApplicationFolder, IsTheOneOfTheEnvironment) {
    const test::TemporaryFolder folder;
    const ScopedEnvironment chosen("LEDGIX_FOLDER", folder.path());
    EXPECT_EQ(ApplicationFolder(), folder.path());
    EXPECT_EQ(ApplicationFile("property.mdb"), folder.path() + PathSeparator() + "property.mdb");
}

TEST(ApplicationFolder, HasNoSeparatorAtItsEnd) {
    const test::TemporaryFolder folder;
    const ScopedEnvironment chosen("LEDGIX_FOLDER", folder.path() + PathSeparator() + PathSeparator());
    EXPECT_EQ(ApplicationFolder(), folder.path());
}

TEST(ApplicationFolder, MayBeTheRoot) {
    const std::string root(1, PathSeparator());
    const ScopedEnvironment chosen("LEDGIX_FOLDER", root);
    EXPECT_EQ(ApplicationFolder(), root);
}

TEST(ApplicationFolder, IsTheProgramsOtherwise) {
    const ScopedEnvironment none("LEDGIX_FOLDER", std::nullopt);
    EXPECT_EQ(ApplicationFolder(), ProgramFolder());
    const ScopedEnvironment empty("LEDGIX_FOLDER", "");
    EXPECT_EQ(ApplicationFolder(), ProgramFolder());
}

TEST(ProgramFolder, HoldsTheRunningProgram) {
    EXPECT_TRUE(std::filesystem::is_directory(ToPath(ProgramFolder())));
    EXPECT_TRUE(FindFile(ProgramFolder() + PathSeparator() + "runtime_tests") ||
                FindFile(ProgramFolder() + PathSeparator() + "runtime_tests.exe"));
}

}  // namespace
}  // namespace ledgix::runtime
