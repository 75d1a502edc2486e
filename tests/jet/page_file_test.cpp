#include "page_file.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "error_of.h"
#include "temporary_folder.h"

namespace ledgix::test {

namespace {

using jet::MakeMemoryFile;
using jet::OpenPageFile;

constexpr int kNotFound = 3024;
constexpr int kReadFailure = 3043;
constexpr int kCannotOpen = 3051;

TEST(PageFile, ReadsBytesByOffset) {
    const TemporaryFolder folder;
    const auto file = OpenPageFile(folder.Write("a.mdb", "0123456789"));
    std::array<std::uint8_t, 3> bytes{};
    file->Read(4, bytes);
    EXPECT_EQ(bytes, (std::array<std::uint8_t, 3>{'4', '5', '6'}));
    EXPECT_EQ(file->size(), 10U);
}

TEST(PageFile, ThatIsMissingIsNotFound) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { OpenPageFile(folder.File("none.mdb")); }), kNotFound);
    EXPECT_EQ(ErrorOf([&] { OpenPageFile(folder.File("no folder/none.mdb")); }), kNotFound);
}

TEST(PageFile, ThatIsAFolderCannotBeOpened) {
    const TemporaryFolder folder;
    EXPECT_EQ(ErrorOf([&] { OpenPageFile(folder.path()); }), kCannotOpen);
}

TEST(PageFile, OpensWithoutTheRightToWrite) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.mdb", "0123456789");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    EXPECT_EQ(OpenPageFile(path)->size(), 10U);
}

TEST(PageFile, FailsToReadPastItsEnd) {
    const TemporaryFolder folder;
    const auto file = OpenPageFile(folder.Write("a.mdb", "0123456789"));
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_EQ(ErrorOf([&] { file->Read(7, bytes); }), kReadFailure);
    EXPECT_EQ(ErrorOf([&] { file->Read(1U << 30, bytes); }), kReadFailure);
}

TEST(PageFile, ThatAnotherProcessCutsOffFailsToRead) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("a.mdb", "0123456789");
    const auto file = OpenPageFile(path);
    std::filesystem::resize_file(path, 4);
    std::array<std::uint8_t, 4> bytes{};
    EXPECT_EQ(ErrorOf([&] { file->Read(2, bytes); }), kReadFailure);
    EXPECT_EQ(file->size(), 4U);
}

TEST(MemoryFile, ReadsBytesByOffset) {
    const auto file = MakeMemoryFile({10, 11, 12, 13});
    std::array<std::uint8_t, 2> bytes{};
    file->Read(2, bytes);
    EXPECT_EQ(bytes, (std::array<std::uint8_t, 2>{12, 13}));
    EXPECT_EQ(file->size(), 4U);
}

TEST(MemoryFile, FailsToReadPastItsEnd) {
    const auto file = MakeMemoryFile({10, 11, 12, 13});
    std::array<std::uint8_t, 2> bytes{};
    EXPECT_EQ(ErrorOf([&] { file->Read(3, bytes); }), kReadFailure);
    EXPECT_EQ(ErrorOf([&] { file->Read(~std::uint64_t{0}, bytes); }), kReadFailure);
}

}  // namespace

}  // namespace ledgix::test
