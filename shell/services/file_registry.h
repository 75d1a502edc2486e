#pragma once

#include <functional>
#include <map>

#include "raw_registry.h"
#include "registry_text.h"

namespace ledgix::services {

// A registry of one hive in a text file: see RegistryText for its syntax. The file is read anew for every call and
// replaced as a whole by a change. A file that is missing has no keys; it and its folder are made with the first one.
// The file's own permissions decide who may read and change it, whatever access a key was opened with.
class FileRegistry : public RawRegistry {
public:
    // `place` tells the file's path at each call.
    explicit FileRegistry(std::function<std::string()> place);

    RegistryStatus OpenKey(RegistryHive hive, const std::string& path, std::uint32_t access, RegistryKey& key) override;
    RegistryStatus QueryValue(RegistryKey key, const std::string& name, std::uint32_t& type, std::span<char> buffer,
                              std::uint32_t& length) override;
    RegistryStatus CreateKey(RegistryHive hive, const std::string& path, RegistryKey& key) override;
    RegistryStatus SetValue(RegistryKey key, const std::string& name, std::uint32_t type,
                            const std::string& bytes) override;
    RegistryStatus CloseKey(RegistryKey key) override;

    // The code page is 1252.
    std::string ToAnsi(const std::string& utf8) const override;
    std::string FromAnsi(const std::string& bytes) const override;

private:
    RegistryKey Open(const std::string& key);
    // A file that is missing gives an empty text.
    RegistryStatus Read(std::string& text) const;
    RegistryStatus Write(const std::string& text) const;
    // Reads the file, and writes it again when `change` says that it has changed the text.
    RegistryStatus Change(const std::function<bool(RegistryText&)>& change);

    std::function<std::string()> place_;
    std::map<RegistryKey, std::string> open_;  // paths of keys in UTF-8, with the hive's name
    RegistryKey last_ = 0;
};

}  // namespace ledgix::services
