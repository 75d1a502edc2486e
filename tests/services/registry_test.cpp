#include "registry.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "cases.h"
#include "error_of.h"
#include "file_registry.h"
#include "message_recorder.h"
#include "runtime_error.h"
#include "scoped_environment.h"
#include "temporary_folder.h"
#include "text.h"

namespace ledgix::services {
namespace {

using nlohmann::json;
using test::ErrorOf;

constexpr const char* kSettingsPath = "SOFTWARE\\Vantreo\\Settings";
constexpr const char* kName = "Networkable";

std::string BytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2)
        bytes.push_back(static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16)));
    return bytes;
}

std::uint32_t TypeNamed(const std::string& name) {
    static const std::map<std::string, std::uint32_t> types{
        {"REG_SZ", 1}, {"REG_EXPAND_SZ", 2}, {"REG_BINARY", 3}, {"REG_DWORD", 4}};
    return types.at(name);
}

// Answers every call as it is told, and notes the calls.
class ScriptedRegistry : public RawRegistry {
public:
    ScriptedRegistry() { InstallRegistry(this); }
    ~ScriptedRegistry() override { InstallRegistry(nullptr); }
    ScriptedRegistry(const ScriptedRegistry&) = delete;
    ScriptedRegistry& operator=(const ScriptedRegistry&) = delete;

    RegistryStatus OpenKey(RegistryHive hive, const std::string& path, std::uint32_t access,
                           RegistryKey& key) override {
        Note("open " + std::to_string(static_cast<std::uint32_t>(hive)) + " " + path + " " + std::to_string(access));
        key = open_status == kRegistrySuccess ? 7 : 0;
        return open_status;
    }
    RegistryStatus QueryValue(RegistryKey key, const std::string& name, std::uint32_t& type, std::span<char> buffer,
                              std::uint32_t& length) override {
        Note("query " + std::to_string(key) + " " + name + " " + std::to_string(buffer.size()));
        type = kRegistryText;
        length = 1;
        buffer[0] = '1';
        return query_status;
    }
    RegistryStatus CreateKey(RegistryHive, const std::string& path, RegistryKey& key) override {
        Note("create " + path);
        key = 7;
        return create_status;
    }
    RegistryStatus SetValue(RegistryKey key, const std::string& name, std::uint32_t type,
                            const std::string& bytes) override {
        Note("set " + std::to_string(key) + " " + name + " " + std::to_string(type) + " " + bytes);
        return set_status;
    }
    RegistryStatus CloseKey(RegistryKey key) override {
        Note("close " + std::to_string(key));
        return close_status;
    }
    // An ANSI code page in which every character beyond ASCII takes two bytes.
    std::string ToAnsi(const std::string& utf8) const override {
        std::string bytes;
        for (const char32_t c : runtime::ToUtf32(utf8))
            bytes += c < 0x80 ? std::string(1, static_cast<char>(c)) : "<>";
        return bytes;
    }
    std::string FromAnsi(const std::string& bytes) const override { return bytes; }

    RegistryStatus open_status = kRegistrySuccess;
    RegistryStatus query_status = kRegistrySuccess;
    RegistryStatus create_status = kRegistrySuccess;
    RegistryStatus set_status = kRegistrySuccess;
    RegistryStatus close_status = kRegistrySuccess;
    std::string calls;

private:
    void Note(const std::string& call) { calls += call + "\n"; }
};

// A registry in a file of its own.
class RegistryInFile : public testing::Test {
protected:
    RegistryInFile() { InstallRegistry(&registry_); }
    ~RegistryInFile() override { InstallRegistry(nullptr); }

    void Store(std::uint32_t type, const std::string& bytes, const std::string& name = kName) {
        RegistryKey key = 0;
        ASSERT_EQ(registry_.CreateKey(RegistryHive::kLocalMachine, kSettingsPath, key), kRegistrySuccess);
        ASSERT_EQ(registry_.SetValue(key, name, type, bytes), kRegistrySuccess);
        ASSERT_EQ(registry_.CloseKey(key), kRegistrySuccess);
    }

    RegistryValue Stored(const std::string& name = kName) {
        const std::string key = std::string("HKEY_LOCAL_MACHINE\\") + kSettingsPath;
        return RegistryText(test::Content(place_)).Find(key, name).value_or(RegistryValue{});
    }

    std::string Get(const std::string& fallback) { return GetRegistrySetting("Settings", kName, fallback); }

    const test::TemporaryFolder folder_;
    const std::string place_ = folder_.File("ledgix.reg");
    FileRegistry registry_{[this] { return place_; }};
    test::MessageRecorder box_;
};

class RegistryReadCase : public RegistryInFile, public testing::WithParamInterface<json> {};

TEST_P(RegistryReadCase, GivesTheValue) {
    const json& wanted = GetParam();
    if (!wanted.at("bytes").is_null())
        Store(TypeNamed(wanted.at("type").get<std::string>()), BytesOfHex(wanted.at("bytes").get<std::string>()));
    EXPECT_EQ(Get(wanted.at("default").get<std::string>()), wanted.at("value").get<std::string>());
}

INSTANTIATE_TEST_SUITE_P(, RegistryReadCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("registry.json").at("read"))),
                         test::CaseName);

class RegistrySaveCase : public RegistryInFile, public testing::WithParamInterface<json> {};

TEST_P(RegistrySaveCase, StoresTheBytesAndReadsThemBack) {
    const json& wanted = GetParam();
    auto value = wanted.at("value").get<std::string>();
    SaveRegistrySetting("Settings", kName, value);
    EXPECT_EQ(value, wanted.at("variableAfter").get<std::string>());
    EXPECT_EQ(Stored(), (RegistryValue{TypeNamed(wanted.at("storedType").get<std::string>()),
                                       BytesOfHex(wanted.at("storedBytes").get<std::string>())}));
    EXPECT_EQ(Get("fallback"), wanted.at("readBack").get<std::string>());
    EXPECT_TRUE(box_.messages().empty());
}

INSTANTIATE_TEST_SUITE_P(, RegistrySaveCase,
                         testing::ValuesIn(test::CaseList(test::LoadCases("registry.json").at("save"))),
                         test::CaseName);

TEST_F(RegistryInFile, HoldsManySettingsApart) {
    std::string networkable = "1";
    std::string location = "/srv/property.mdb";
    std::string other = "2";
    SaveRegistrySetting("Settings", "Networkable", networkable);
    SaveRegistrySetting("Settings", "DatabaseLocation", location);
    SaveRegistrySetting("Windows", "Networkable", other);
    EXPECT_EQ(GetRegistrySetting("settings", "NETWORKABLE", ""), "1");
    EXPECT_EQ(GetRegistrySetting("Settings", "DatabaseLocation", ""), "/srv/property.mdb");
    EXPECT_EQ(GetRegistrySetting("Windows", "Networkable", ""), "2");
}

TEST_F(RegistryInFile, OverwritesAValueOfAnyType) {
    Store(kRegistryNumber, std::string("\5\1\0\0", 4));
    EXPECT_EQ(Get(""), "21");
    std::string value = "no";
    SaveRegistrySetting("Settings", kName, value);
    EXPECT_EQ(Get(""), "no");
}

TEST_F(RegistryInFile, ReadsWhatAnAdministratorTypes) {
    folder_.Write("ledgix.reg",
                  "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vantreo\\Settings]\n"
                  "\"Networkable\"=dword:00000001\n\"DatabaseLocation\"=\"/srv/caf\xC3\xA9/property.mdb\"\n");
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "1");
    EXPECT_EQ(GetRegistrySetting("Settings", "DatabaseLocation", ""), "/srv/café/property.mdb");
}

TEST_F(RegistryInFile, ReadsNumbersAbove31BitsAsNegative) {
    Store(kRegistryNumber, "\xFE\xFF\xFF\xFF");
    EXPECT_EQ(Get(""), "-2");
    Store(kRegistryNumber, std::string("\x10\x10\x10\x80", 4));
    EXPECT_EQ(Get(""), "-2146430960");
}

TEST_F(RegistryInFile, OverflowsOnANumberOfMoreThan32Bits) {
    Store(kRegistryNumber, "\xFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(ErrorOf([&] { Get(""); }), 6);
}

TEST_F(RegistryInFile, ReadsANumberWithoutBytesAsZero) {
    Store(kRegistryNumber, "");
    EXPECT_EQ(Get("fallback"), "0");
}

TEST_F(RegistryInFile, ReadsATextWithoutBytesAsEmpty) {
    Store(kRegistryText, "");
    EXPECT_EQ(Get("fallback"), "");
}

TEST_F(RegistryInFile, LeavesTheResultForATypeThatItDoesNotKnow) {
    Store(kRegistryBinary, "abc");
    std::string result = "as passed in";
    EXPECT_TRUE(RegistryReadValue(RegistryHive::kLocalMachine, kSettingsPath, kName, result));
    EXPECT_EQ(result, "as passed in");
}

TEST_F(RegistryInFile, AppendsTheDigitsOfANumberToTheResult) {
    Store(kRegistryNumber, std::string("\5\1\0\0", 4));
    std::string result = "1";
    EXPECT_TRUE(RegistryReadValue(RegistryHive::kLocalMachine, kSettingsPath, kName, result));
    EXPECT_EQ(result, "4117");  // 0x1015
}

TEST_F(RegistryInFile, EmptiesTheResultWhenThereIsNothingToRead) {
    std::string result = "as passed in";
    EXPECT_FALSE(RegistryReadValue(RegistryHive::kLocalMachine, kSettingsPath, kName, result));
    EXPECT_EQ(result, "");
    Store(kRegistryText, "1");
    result = "as passed in";
    EXPECT_FALSE(RegistryReadValue(RegistryHive::kLocalMachine, kSettingsPath, "Other", result));
    EXPECT_EQ(result, "");
}

TEST(RegistryRead, OpensQueriesAndCloses) {
    ScriptedRegistry registry;
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "1");
    EXPECT_EQ(registry.calls,
              "open 2147483650 SOFTWARE\\Vantreo\\Settings 131135\n"
              "query 7 Networkable 1024\n"
              "close 7\n");
}

TEST(RegistryRead, ClosesTheKeyThatItCouldNotOpen) {
    ScriptedRegistry registry;
    registry.open_status = kRegistryAccessDenied;
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "0");
    EXPECT_EQ(registry.calls, "open 2147483650 SOFTWARE\\Vantreo\\Settings 131135\nclose 0\n");
}

TEST(RegistryRead, ClosesTheKeyWhenTheQueryFails) {
    ScriptedRegistry registry;
    registry.query_status = kRegistryMoreData;
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "0");
    EXPECT_EQ(registry.calls.substr(registry.calls.size() - 8), "close 7\n");
}

TEST(RegistryWrite, CreatesSetsAndCloses) {
    ScriptedRegistry registry;
    EXPECT_EQ(RegistryWriteValue(RegistryHive::kLocalMachine, "SOFTWARE\\X", "Name", "text"), kRegistrySuccess);
    EXPECT_EQ(registry.calls, "create SOFTWARE\\X\nset 7 Name 1 text\nclose 7\n");
}

TEST(RegistryWrite, GivesTheStatusOfACreateThatFailedAndWritesNothing) {
    ScriptedRegistry registry;
    registry.create_status = kRegistryAccessDenied;
    EXPECT_EQ(RegistryWriteValue(RegistryHive::kLocalMachine, "SOFTWARE\\X", "Name", "text"), kRegistryAccessDenied);
    EXPECT_EQ(registry.calls, "create SOFTWARE\\X\n");
}

TEST(RegistryWrite, GivesTheStatusOfTheWriteBeforeThatOfTheClose) {
    ScriptedRegistry registry;
    registry.close_status = kRegistryInvalidHandle;
    EXPECT_EQ(RegistryWriteValue(RegistryHive::kLocalMachine, "SOFTWARE\\X", "N", "t"), kRegistryInvalidHandle);
    registry.set_status = kRegistryAccessDenied;
    EXPECT_EQ(RegistryWriteValue(RegistryHive::kLocalMachine, "SOFTWARE\\X", "N", "t"), kRegistryAccessDenied);
}

TEST(RegistryWrite, CountsCharactersAndNotBytes) {
    ScriptedRegistry registry;
    RegistryWriteValue(RegistryHive::kLocalMachine, "SOFTWARE\\X", "Näme", "äb");
    EXPECT_EQ(registry.calls, "create SOFTWARE\\X\nset 7 N<>me 1 <>\nclose 7\n");
}

TEST(RegistrySave, SaysNothingAboutMissingRights) {
    ScriptedRegistry registry;
    test::MessageRecorder box;
    registry.create_status = kRegistryAccessDenied;
    std::string value;
    SaveRegistrySetting("Settings", "Networkable", value);
    EXPECT_EQ(value, "vbNullString");
    EXPECT_TRUE(box.messages().empty());
}

// A registry in which something goes wrong on every way in.
class BrokenRegistry : public ScriptedRegistry {
public:
    RegistryStatus CreateKey(RegistryHive, const std::string&, RegistryKey&) override {
        runtime::RaiseError(runtime::ErrorNumber::kDeviceIo);
    }
    RegistryStatus OpenKey(RegistryHive, const std::string&, std::uint32_t, RegistryKey&) override {
        runtime::RaiseError(runtime::ErrorNumber::kDeviceIo);
    }
};

TEST(RegistrySave, ShowsAnErrorWithTheExclamationIconAndReturns) {
    const BrokenRegistry registry;
    const test::MessageRecorder box;
    std::string value = "1";
    SaveRegistrySetting("Settings", "Networkable", value);
    EXPECT_EQ(box.messages(), (std::vector<test::MessageRecorder::Message>{
                                  {"57 - Device I/O error", runtime::kExclamation, "Save Registry Setting"}}));
}

TEST(RegistryRead, LetsAnErrorPass) {
    const BrokenRegistry registry;
    const test::MessageRecorder box;
    EXPECT_EQ(ErrorOf([] { GetRegistrySetting("Settings", "Networkable", "0"); }), 57);
    EXPECT_TRUE(box.messages().empty());
}

TEST(RegistryInForce, IsTheFileThatTheEnvironmentNames) {
    const test::TemporaryFolder folder;
    const test::ScopedEnvironment place("LEDGIX_SETTINGS", folder.File("chosen.reg"));
    std::string value = "42";
    SaveRegistrySetting("Settings", "Networkable", value);
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "42");
    EXPECT_EQ(folder.List(), "chosen.reg");
}

TEST(RegistryInForce, IsTheInstalledOneBeforeTheEnvironments) {
    const test::TemporaryFolder folder;
    const test::ScopedEnvironment place("LEDGIX_SETTINGS", folder.Write("chosen.reg", ""));
    const ScriptedRegistry registry;
    EXPECT_EQ(GetRegistrySetting("Settings", "Networkable", "0"), "1");
}

TEST(RegistryInForce, IsTheSystemsOtherwise) {
    const test::ScopedEnvironment place("LEDGIX_SETTINGS", "");
    EXPECT_EQ(&Registry(), &SystemRegistry());
}

}  // namespace
}  // namespace ledgix::services
