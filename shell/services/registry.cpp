#include "registry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "conversions.h"
#include "message_box.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::services {

namespace {

constexpr std::string_view kRoot = "SOFTWARE\\Vantreo\\";
constexpr std::string_view kEmptyText = "vbNullString";
constexpr std::size_t kBufferSize = 1024;
// Query, set, create sub-key, enumerate, notify, create link, read control: more than a read needs, kept as it is.
constexpr std::uint32_t kReadAccess = 0x2003F;

std::string PathOf(const std::string& section) {
    return std::string(kRoot) + section;
}

// Upper-case hexadecimal digits without padding.
std::string HexDigits(unsigned char byte) {
    std::array<char, 2> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), byte, 16).ptr;
    std::string text(digits.data(), end);
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'a' ? c - 'a' + 'A' : c; });
    return text;
}

// The number that "&h" and `digits` denote: 32 bits in two's complement, 0 without digits.
std::string HexToDecimal(const std::string& digits) {
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number, 16);
    if (read.ec == std::errc::result_out_of_range)
        runtime::RaiseError(runtime::ErrorNumber::kOverflow);
    if (read.ptr != end)
        runtime::RaiseError(runtime::ErrorNumber::kTypeMismatch);
    return runtime::ToText(static_cast<std::int32_t>(number));
}

void TakeValue(const RawRegistry& registry, std::uint32_t type, std::string bytes, std::string& result) {
    if (!bytes.empty() && bytes.back() == '\0')
        bytes.pop_back();
    if (type == kRegistryText) {
        result = registry.FromAnsi(bytes);
    } else if (type == kRegistryNumber) {
        for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
            result += HexDigits(static_cast<unsigned char>(*byte));
        result = HexToDecimal(result);
    }
}

}  // namespace

std::string GetRegistrySetting(const std::string& section, const std::string& name, const std::string& fallback) {
    std::string result;
    if (!RegistryReadValue(RegistryHive::kLocalMachine, PathOf(section), name, result))
        result = fallback;
    return result == kEmptyText ? std::string() : result;
}

void SaveRegistrySetting(const std::string& section, const std::string& name, std::string& value) {
    try {
        if (value.empty())
            value = kEmptyText;
        RegistryWriteValue(RegistryHive::kLocalMachine, PathOf(section), name, value);
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, "Save Registry Setting", runtime::kExclamation);
    }
}

bool RegistryReadValue(RegistryHive hive, const std::string& path, const std::string& name, std::string& result) {
    RawRegistry& registry = Registry();
    RegistryKey key = 0;
    std::array<char, kBufferSize> buffer{};
    auto length = static_cast<std::uint32_t>(buffer.size());
    std::uint32_t type = 0;
    RegistryStatus status = registry.OpenKey(hive, registry.ToAnsi(path), kReadAccess, key);
    if (status == kRegistrySuccess)
        status = registry.QueryValue(key, registry.ToAnsi(name), type, buffer, length);
    registry.CloseKey(key);
    if (status != kRegistrySuccess) {
        result.clear();
        return false;
    }
    TakeValue(registry, type, std::string(buffer.data(), length), result);
    return true;
}

RegistryStatus RegistryWriteValue(RegistryHive hive, const std::string& path, const std::string& name,
                                  const std::string& value) {
    RawRegistry& registry = Registry();
    RegistryKey key = 0;
    const RegistryStatus created = registry.CreateKey(hive, registry.ToAnsi(path), key);
    if (created != kRegistrySuccess)
        return created;
    // The length that is given counts characters, whatever the code page makes of them.
    const std::size_t characters = runtime::ToUtf32(value).size();
    const std::string bytes = registry.ToAnsi(value).substr(0, characters);
    const RegistryStatus written = registry.SetValue(key, registry.ToAnsi(name), kRegistryText, bytes);
    const RegistryStatus closed = registry.CloseKey(key);
    return written != kRegistrySuccess ? written : closed;
}

}  // namespace ledgix::services
