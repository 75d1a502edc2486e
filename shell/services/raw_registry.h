#pragma once

#include <cstdint>
#include <span>
#include <string>

// The registry as its platform gives it: keys opened by path, values of raw bytes, a status for every call.
namespace ledgix::services {

// Status codes; others may come from the platform.
using RegistryStatus = std::int32_t;
inline constexpr RegistryStatus kRegistrySuccess = 0;
inline constexpr RegistryStatus kRegistryNotFound = 2;
inline constexpr RegistryStatus kRegistryAccessDenied = 5;
inline constexpr RegistryStatus kRegistryInvalidHandle = 6;
inline constexpr RegistryStatus kRegistryInvalidParameter = 87;
inline constexpr RegistryStatus kRegistryMoreData = 234;

// Types of values.
inline constexpr std::uint32_t kRegistryText = 1;
inline constexpr std::uint32_t kRegistryBinary = 3;
inline constexpr std::uint32_t kRegistryNumber = 4;

enum class RegistryHive : std::uint32_t { kLocalMachine = 0x80000002 };

// An open key; 0 is none.
using RegistryKey = std::uintptr_t;

// Paths, names and text values are in the system's ANSI code page.
class RawRegistry {
public:
    virtual ~RawRegistry() = default;

    virtual RegistryStatus OpenKey(RegistryHive hive, const std::string& path, std::uint32_t access,
                                   RegistryKey& key) = 0;
    // Puts the bytes of a value into `buffer` and their count into `length`. When they do not fit, the status is
    // kRegistryMoreData, `length` still tells how many there are, and the buffer's content is undefined.
    virtual RegistryStatus QueryValue(RegistryKey key, const std::string& name, std::uint32_t& type,
                                      std::span<char> buffer, std::uint32_t& length) = 0;
    // Opens a key, which is made if it is missing.
    virtual RegistryStatus CreateKey(RegistryHive hive, const std::string& path, RegistryKey& key) = 0;
    virtual RegistryStatus SetValue(RegistryKey key, const std::string& name, std::uint32_t type,
                                    const std::string& bytes) = 0;
    virtual RegistryStatus CloseKey(RegistryKey key) = 0;

    virtual std::string ToAnsi(const std::string& utf8) const = 0;
    virtual std::string FromAnsi(const std::string& bytes) const = 0;
};

// Makes `registry` the one in force; nullptr brings back the system's. The caller keeps it.
void InstallRegistry(RawRegistry* registry);

// The registry in force: the installed one, or else the system's. Where the system has none, or where the environment
// variable LEDGIX_SETTINGS names a file, it is a file in the registry's export syntax.
RawRegistry& Registry();

// What the system has for a registry. One body for each platform.
RawRegistry& SystemRegistry();

}  // namespace ledgix::services
