#include <windows.h>

#include "raw_registry.h"

namespace ledgix::services {

namespace {

HKEY HandleOf(RegistryHive hive) {
    return hive == RegistryHive::kLocalMachine ? HKEY_LOCAL_MACHINE : nullptr;
}

HKEY HandleOf(RegistryKey key) {
    return reinterpret_cast<HKEY>(key);
}

// Translates between code pages by way of UTF-16.
std::string Translate(const std::string& text, UINT from, UINT to) {
    const auto size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(from, 0, text.data(), size, nullptr, 0)), L'\0');
    const auto wide_size = static_cast<int>(wide.size());
    MultiByteToWideChar(from, 0, text.data(), size, wide.data(), wide_size);
    const int needed = WideCharToMultiByte(to, 0, wide.data(), wide_size, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(to, 0, wide.data(), wide_size, out.data(), needed, nullptr, nullptr);
    return out;
}

class WindowsRegistry : public RawRegistry {
public:
    RegistryStatus OpenKey(RegistryHive hive, const std::string& path, std::uint32_t access,
                           RegistryKey& key) override {
        HKEY handle = nullptr;
        const LSTATUS status = RegOpenKeyExA(HandleOf(hive), path.c_str(), 0, access, &handle);
        key = reinterpret_cast<RegistryKey>(handle);
        return status;
    }

    RegistryStatus QueryValue(RegistryKey key, const std::string& name, std::uint32_t& type, std::span<char> buffer,
                              std::uint32_t& length) override {
        DWORD found_type = 0;
        auto found_length = static_cast<DWORD>(buffer.size());
        const LSTATUS status = RegQueryValueExA(HandleOf(key), name.c_str(), nullptr, &found_type,
                                                reinterpret_cast<BYTE*>(buffer.data()), &found_length);
        type = found_type;
        length = found_length;
        return status;
    }

    RegistryStatus CreateKey(RegistryHive hive, const std::string& path, RegistryKey& key) override {
        HKEY handle = nullptr;
        const LSTATUS status = RegCreateKeyA(HandleOf(hive), path.c_str(), &handle);
        key = reinterpret_cast<RegistryKey>(handle);
        return status;
    }

    RegistryStatus SetValue(RegistryKey key, const std::string& name, std::uint32_t type,
                            const std::string& bytes) override {
        return RegSetValueExA(HandleOf(key), name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                              static_cast<DWORD>(bytes.size()));
    }

    RegistryStatus CloseKey(RegistryKey key) override { return RegCloseKey(HandleOf(key)); }

    std::string ToAnsi(const std::string& utf8) const override { return Translate(utf8, CP_UTF8, CP_ACP); }
    std::string FromAnsi(const std::string& bytes) const override { return Translate(bytes, CP_ACP, CP_UTF8); }
};

}  // namespace

RawRegistry& SystemRegistry() {
    static WindowsRegistry registry;
    return registry;
}

}  // namespace ledgix::services
