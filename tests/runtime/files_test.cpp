#include "files.h"

#include <gtest/gtest.h>

#include "error_of.h"
#include "temporary_folder.h"

namespace ledgix::runtime {
namespace {

using test::Content;
using test::ErrorOf;
using test::TemporaryFolder;

constexpr int kFileNotFound = 53;
constexpr int kDeviceIo = 57;

TEST(FindFile, GivesThePathOfAFileThatIsThere) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("property.mdb", "x");
    EXPECT_EQ(FindFile(path), path);
}

TEST(FindFile, DisregardsTheCaseOfTheName) {
    const TemporaryFolder folder;
    folder.Write("property.mdb", "x");
    const std::optional<std::string> found = FindFile(folder.File("Property.MDB"));
    ASSERT_TRUE(found);
    EXPECT_EQ(Content(*found), "x");
}

TEST(FindFile, DisregardsTheCaseOfLettersBeyondAscii) {
    const TemporaryFolder folder;
    folder.Write("Häuser.mdb", "x");
    ASSERT_TRUE(FindFile(folder.File("HÄUSER.mdb")));
}

TEST(FindFile, PrefersTheExactName) {
    const TemporaryFolder folder;
    folder.Write("property.mdb", "small");
    folder.Write("Property.mdb", "capital");
    EXPECT_EQ(Content(FindFile(folder.File("property.mdb")).value()), Content(folder.File("property.mdb")));
    EXPECT_EQ(Content(FindFile(folder.File("Property.mdb")).value()), Content(folder.File("Property.mdb")));
}

TEST(FindFile, GoesUpAFolder) {
    const TemporaryFolder folder;
    folder.Write("property.mdb", "above");
    folder.MakeFolder("app");
    const std::optional<std::string> found = FindFile(folder.File("app") + "/../Property.mdb");
    ASSERT_TRUE(found);
    EXPECT_EQ(Content(*found), "above");
}

TEST(FindFile, FindsNoFoldersAndNothingThatIsMissing) {
    const TemporaryFolder folder;
    folder.MakeFolder("property.mdb");
    EXPECT_FALSE(FindFile(folder.File("property.mdb")));
    EXPECT_FALSE(FindFile(folder.File("Property.mdb")));
    EXPECT_FALSE(FindFile(folder.File("missing.mdb")));
    EXPECT_FALSE(FindFile(folder.File("no folder/property.mdb")));
    EXPECT_FALSE(FindFile(""));
}

TEST(ReadFile, GivesEveryByte) {
    const TemporaryFolder folder;
    const std::string bytes("a\0\r\n\x1A\xFF", 6);
    EXPECT_EQ(ReadFile(folder.Write("bytes", bytes)), bytes);
    EXPECT_EQ(ReadFile(folder.Write("empty", "")), "");
}

TEST(ReadFile, GivesFilesOfAnyLength) {
    const TemporaryFolder folder;
    for (const std::size_t size : {65535U, 65536U, 65537U, 200000U})
        EXPECT_EQ(ReadFile(folder.Write("bytes", std::string(size, 'x'))).size(), size);
}

TEST(ReadFile, NeedsAFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { ReadFile(folder.File("missing")); }), kFileNotFound);
    EXPECT_EQ(ErrorOf([&] { ReadFile(folder.path()); }), kFileNotFound);
}

TEST(WriteFile, ReplacesWhatWasThere) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("settings", "a longer text than the new one");
    WriteFile(path, "new");
    EXPECT_EQ(Content(path), "new");
    EXPECT_EQ(folder.List(), "settings");
}

TEST(WriteFile, MakesAFileWithAnyName) {
    const TemporaryFolder folder;
    WriteFile(folder.File("Übersicht.txt"), "new");
    EXPECT_EQ(folder.List(), "Übersicht.txt");
}

TEST(WriteFile, LeavesTheOldFileWhenTheNewOneCannotBeWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("settings", "old");
    folder.MakeFolder("settings.part/in the way");
    EXPECT_EQ(ErrorOf([&] { WriteFile(path, "new"); }), kDeviceIo);
    EXPECT_EQ(Content(path), "old");
}

TEST(WriteFile, LeavesNothingWhereTheFolderIsMissing) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { WriteFile(folder.File("no folder/settings"), "new"); }), kDeviceIo);
    EXPECT_EQ(ErrorOf([&] { WriteFile(folder.path(), "new"); }), kDeviceIo);
    EXPECT_EQ(folder.List(), "");
}

TEST(AppendFile, AddsAtTheEndAndMakesTheFile) {
    const TemporaryFolder folder;
    const std::string path = folder.File("log");
    AppendFile(path, "one\r\n");
    AppendFile(path, "two\r\n");
    EXPECT_EQ(Content(path), "one\r\ntwo\r\n");
}

TEST(AppendFile, NeedsAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { AppendFile(folder.File("no folder/log"), "x"); }), kDeviceIo);
    EXPECT_EQ(ErrorOf([&] { AppendFile(folder.path(), "x"); }), kDeviceIo);
}

#ifndef _WIN32

TEST(WriteFile, KeepsThePermissions) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const std::string path = folder.Write("settings", "old");
    fs::permissions(ToPath(path), fs::perms::owner_read | fs::perms::owner_write);
    WriteFile(path, "new");
    EXPECT_EQ(fs::status(ToPath(path)).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(WriteFile, WritesWhereALinkPoints) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("settings", "old");
    std::filesystem::create_symlink("settings", ToPath(folder.File("link")));
    WriteFile(folder.File("link"), "new");
    EXPECT_EQ(Content(path), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(ToPath(folder.File("link"))));
}

TEST(WriteFile, WritesToADeviceInPlace) {
    EXPECT_EQ(ErrorOf([] { WriteFile("/dev/null", "gone"); }), 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

#endif

#ifdef __linux__

// A regular file, as its kind goes, whose first byte cannot be read.
constexpr const char* kUnreadableFile = "/proc/self/mem";

TEST(ReadFile, ReportsAFileThatCannotBeRead) {
    EXPECT_EQ(ErrorOf([] { ReadFile(kUnreadableFile); }), kDeviceIo);
}

TEST(WriteFile, ReportsAFullDevice) {
    EXPECT_EQ(ErrorOf([] { WriteFile("/dev/full", "lost"); }), kDeviceIo);
    EXPECT_EQ(ErrorOf([] { AppendFile("/dev/full", "lost"); }), kDeviceIo);
}

#endif

}  // namespace
}  // namespace ledgix::runtime
