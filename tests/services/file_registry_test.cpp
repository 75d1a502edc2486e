#include "file_registry.h"

#include <gtest/gtest.h>

#include <array>

#include "temporary_folder.h"

namespace ledgix::services {
namespace {

constexpr RegistryHive kHive = RegistryHive::kLocalMachine;
constexpr std::uint32_t kAnyAccess = 0x2003F;

class FileRegistryTest : public testing::Test {
protected:
    RegistryKey Create(const std::string& path) {
        RegistryKey key = 0;
        EXPECT_EQ(registry_.CreateKey(kHive, path, key), kRegistrySuccess);
        return key;
    }

    RegistryStatus Open(const std::string& path) {
        RegistryKey key = 0;
        const RegistryStatus status = registry_.OpenKey(kHive, path, kAnyAccess, key);
        registry_.CloseKey(key);
        return status;
    }

    // Queries into a buffer of `size` characters.
    RegistryStatus Query(RegistryKey key, const std::string& name, std::size_t size = 16) {
        return registry_.QueryValue(key, name, type_, std::span(buffer_).first(size), length_);
    }

    const test::TemporaryFolder folder_;
    std::string place_ = folder_.File("vantreo/ledgix.reg");
    FileRegistry registry_{[this] { return place_; }};
    std::uint32_t type_ = 0;
    std::uint32_t length_ = 0;
    std::array<char, 16> buffer_{};
};

TEST_F(FileRegistryTest, HasNoKeysWithoutAFile) {
    EXPECT_EQ(Open("SOFTWARE"), kRegistryNotFound);
    EXPECT_EQ(folder_.List(), "");
}

TEST_F(FileRegistryTest, MakesItsFolderAndFileWithTheFirstKey) {
    registry_.CloseKey(Create("SOFTWARE\\Vantreo\\Settings"));
    EXPECT_EQ(test::Content(place_), "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\n");
    EXPECT_EQ(Open("SOFTWARE\\Vantreo\\Settings"), kRegistrySuccess);
    EXPECT_EQ(Open("software\\vantreo"), kRegistrySuccess);
    EXPECT_EQ(Open("SOFTWARE\\Van"), kRegistryNotFound);
}

TEST_F(FileRegistryTest, WritesNothingWhenTheKeyIsThere) {
    folder_.MakeFolder("vantreo");
    const std::string untidy = "  [HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]  ";
    folder_.Write("vantreo/ledgix.reg", untidy);
    registry_.CloseKey(Create("SOFTWARE\\Vantreo"));
    EXPECT_EQ(test::Content(place_), untidy);
}

TEST_F(FileRegistryTest, GivesTypeBytesAndLength) {
    const RegistryKey key = Create("K");
    ASSERT_EQ(registry_.SetValue(key, "n", 9, std::string("a\0b", 3)), kRegistrySuccess);
    EXPECT_EQ(Query(key, "N"), kRegistrySuccess);
    EXPECT_EQ(type_, 9U);
    EXPECT_EQ(std::string(buffer_.data(), length_), std::string("a\0b", 3));
    EXPECT_EQ(Query(key, "other"), kRegistryNotFound);
}

TEST_F(FileRegistryTest, TellsTheLengthOfWhatDoesNotFit) {
    const RegistryKey key = Create("K");
    ASSERT_EQ(registry_.SetValue(key, "n", kRegistryText, "12345"), kRegistrySuccess);
    EXPECT_EQ(Query(key, "n", 5), kRegistrySuccess);
    EXPECT_EQ(Query(key, "n", 4), kRegistryMoreData);
    EXPECT_EQ(length_, 5U);
}

TEST_F(FileRegistryTest, KnowsOnlyTheHandlesThatAreOpen) {
    const RegistryKey first = Create("K");
    const RegistryKey second = Create("K");
    EXPECT_NE(first, second);
    EXPECT_EQ(registry_.CloseKey(first), kRegistrySuccess);
    EXPECT_EQ(registry_.CloseKey(first), kRegistryInvalidHandle);
    EXPECT_EQ(registry_.CloseKey(0), kRegistryInvalidHandle);
    EXPECT_EQ(Query(first, "n"), kRegistryInvalidHandle);
    EXPECT_EQ(registry_.SetValue(first, "n", kRegistryText, "x"), kRegistryInvalidHandle);
    EXPECT_EQ(registry_.SetValue(second, "n", kRegistryText, "x"), kRegistrySuccess);
}

TEST_F(FileRegistryTest, SeesWhatOthersWrite) {
    const RegistryKey key = Create("K");
    FileRegistry other([this] { return place_; });
    RegistryKey others_key = 0;
    ASSERT_EQ(other.OpenKey(kHive, "K", kAnyAccess, others_key), kRegistrySuccess);
    ASSERT_EQ(other.SetValue(others_key, "n", kRegistryText, "new"), kRegistrySuccess);
    EXPECT_EQ(Query(key, "n"), kRegistrySuccess);
    EXPECT_EQ(std::string(buffer_.data(), length_), "new");
}

TEST_F(FileRegistryTest, DeniesAccessWhereNothingCanBeWritten) {
    folder_.Write("vantreo", "a file where the folder should be");
    RegistryKey key = 0;
    EXPECT_EQ(registry_.CreateKey(kHive, "K", key), kRegistryAccessDenied);
    EXPECT_EQ(key, 0U);
}

TEST_F(FileRegistryTest, DeniesAccessWhenTheFileIsGoneAndCannotComeBack) {
    const RegistryKey key = Create("K");
    place_ = folder_.path();
    EXPECT_EQ(registry_.SetValue(key, "n", kRegistryText, "x"), kRegistryAccessDenied);
}

#ifdef __linux__

TEST_F(FileRegistryTest, DeniesAccessToAFileThatCannotBeRead) {
    const RegistryKey key = Create("K");
    place_ = "/proc/self/mem";
    RegistryKey other = 0;
    EXPECT_EQ(Open("K"), kRegistryAccessDenied);
    EXPECT_EQ(Query(key, "n"), kRegistryAccessDenied);
    EXPECT_EQ(registry_.CreateKey(kHive, "K", other), kRegistryAccessDenied);
    EXPECT_EQ(registry_.SetValue(key, "n", kRegistryText, "x"), kRegistryAccessDenied);
}

#endif

TEST_F(FileRegistryTest, RefusesLineBreaksInNames) {
    RegistryKey key = 0;
    EXPECT_EQ(registry_.CreateKey(kHive, "K\n[L]", key), kRegistryInvalidParameter);
    key = Create("K");
    EXPECT_EQ(registry_.SetValue(key, "n\r\n\"m\"", kRegistryText, "x"), kRegistryInvalidParameter);
    EXPECT_EQ(test::Content(place_), "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\K]\n");
}

TEST_F(FileRegistryTest, NamesKeysAndValuesInItsCodePage) {
    const RegistryKey key = Create("Caf\xE9");
    ASSERT_EQ(registry_.SetValue(key, "\x80uro", kRegistryText, std::string("\xE9\0", 2)), kRegistrySuccess);
    EXPECT_EQ(test::Content(place_), "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Café]\n\"€uro\"=\"é\"\n");
    EXPECT_EQ(Open("CAF\xC9"), kRegistrySuccess);
}

}  // namespace
}  // namespace ledgix::services
