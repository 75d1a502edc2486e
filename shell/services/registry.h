#pragma once

#include <string>

#include "raw_registry.h"

// The program's machine-wide settings: text values below "SOFTWARE\Vantreo" in the local-machine hive of the registry.
// An empty text is stored as the word "vbNullString".
namespace ledgix::services {

// The text of a setting, or `fallback` where it is missing or cannot be read. Error 6 for a number value whose digits
// denote more than 32 bits.
std::string GetRegistrySetting(const std::string& section, const std::string& name, const std::string& fallback);

// Stores a setting. An empty `value` becomes "vbNullString" in the caller's variable too. Missing rights are not told;
// an error shows a message box and goes no further.
void SaveRegistrySetting(const std::string& section, const std::string& name, std::string& value);

// Reads a value into `result`; false, and an empty result, when there is none or its bytes do not fit into 1024.
// A text loses one NUL at its end. A number appends the hexadecimal digits of its bytes, from the last to the first and
// without padding, to `result`, which becomes the decimal form of the whole: 0x00000105 reads as "21". Other types
// leave `result` as it is.
bool RegistryReadValue(RegistryHive hive, const std::string& path, const std::string& name, std::string& result);

// Stores a text without a closing NUL. The status of what failed first, or kRegistrySuccess.
RegistryStatus RegistryWriteValue(RegistryHive hive, const std::string& path, const std::string& name,
                                  const std::string& value);

}  // namespace ledgix::services
