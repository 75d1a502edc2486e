#include "file_registry.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "files.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::services {

namespace {

// Empty for a hive that the file does not have.
std::string HiveName(RegistryHive hive) {
    return hive == RegistryHive::kLocalMachine ? "HKEY_LOCAL_MACHINE\\" : "";
}

// A path or a name with a line break cannot be written in the file.
bool IsOneLine(const std::string& text) {
    return text.find_first_of("\r\n") == std::string::npos;
}

}  // namespace

FileRegistry::FileRegistry(std::function<std::string()> place) : place_(std::move(place)) {}

RegistryStatus FileRegistry::Read(std::string& text) const {
    try {
        text = runtime::ReadFile(place_());
        return kRegistrySuccess;
    } catch (const runtime::RuntimeError& error) {
        text.clear();
        return error.Is(runtime::ErrorNumber::kFileNotFound) ? kRegistrySuccess : kRegistryAccessDenied;
    }
}

RegistryStatus FileRegistry::Write(const std::string& text) const {
    const std::string path = place_();
    std::error_code ignored;
    std::filesystem::create_directories(runtime::ToPath(path).parent_path(), ignored);
    try {
        runtime::WriteFile(path, text);
        return kRegistrySuccess;
    } catch (const runtime::RuntimeError&) {
        return kRegistryAccessDenied;
    }
}

RegistryKey FileRegistry::Open(const std::string& key) {
    open_[++last_] = key;
    return last_;
}

RegistryStatus FileRegistry::OpenKey(RegistryHive hive, const std::string& path, std::uint32_t, RegistryKey& key) {
    const std::string full = HiveName(hive) + FromAnsi(path);
    std::string text;
    const RegistryStatus status = Read(text);
    if (status != kRegistrySuccess)
        return status;
    if (!RegistryText(text).HasKey(full))
        return kRegistryNotFound;
    key = Open(full);
    return kRegistrySuccess;
}

RegistryStatus FileRegistry::QueryValue(RegistryKey key, const std::string& name, std::uint32_t& type,
                                        std::span<char> buffer, std::uint32_t& length) {
    const auto opened = open_.find(key);
    if (opened == open_.end())
        return kRegistryInvalidHandle;
    std::string text;
    const RegistryStatus status = Read(text);
    if (status != kRegistrySuccess)
        return status;
    const std::optional<RegistryValue> value = RegistryText(text).Find(opened->second, FromAnsi(name));
    if (!value)
        return kRegistryNotFound;
    type = value->type;
    length = static_cast<std::uint32_t>(value->bytes.size());
    if (value->bytes.size() > buffer.size())
        return kRegistryMoreData;
    std::copy(value->bytes.begin(), value->bytes.end(), buffer.begin());
    return kRegistrySuccess;
}

RegistryStatus FileRegistry::Change(const std::function<bool(RegistryText&)>& change) {
    std::string content;
    const RegistryStatus status = Read(content);
    if (status != kRegistrySuccess)
        return status;
    RegistryText text(content);
    return change(text) ? Write(text.Text()) : kRegistrySuccess;
}

RegistryStatus FileRegistry::CreateKey(RegistryHive hive, const std::string& path, RegistryKey& key) {
    const std::string full = HiveName(hive) + FromAnsi(path);
    if (!IsOneLine(full))
        return kRegistryInvalidParameter;
    const RegistryStatus status = Change([&](RegistryText& text) {
        const bool missing = !text.HasKey(full);
        text.AddKey(full);
        return missing;
    });
    if (status == kRegistrySuccess)
        key = Open(full);
    return status;
}

RegistryStatus FileRegistry::SetValue(RegistryKey key, const std::string& name, std::uint32_t type,
                                      const std::string& bytes) {
    const auto opened = open_.find(key);
    if (opened == open_.end())
        return kRegistryInvalidHandle;
    if (!IsOneLine(name))
        return kRegistryInvalidParameter;
    return Change([&](RegistryText& text) {
        text.Set(opened->second, FromAnsi(name), {type, bytes});
        return true;
    });
}

RegistryStatus FileRegistry::CloseKey(RegistryKey key) {
    return open_.erase(key) == 1 ? kRegistrySuccess : kRegistryInvalidHandle;
}

std::string FileRegistry::ToAnsi(const std::string& utf8) const {
    return runtime::ToCodePage1252(utf8);
}

std::string FileRegistry::FromAnsi(const std::string& bytes) const {
    return runtime::CodePage1252ToUtf8(bytes);
}

}  // namespace ledgix::services
