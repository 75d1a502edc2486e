#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry_text.h"

// The notation of one value in the registry's export syntax.
namespace ledgix::services {

// A name in quotes, or "@" for the empty one, and what follows the equals sign behind it.
struct NamedNotation {
    std::string name;
    std::string_view notation;
};

// Empty when a line is no value's.
std::optional<NamedNotation> SplitValueLine(std::string_view line);

// True when a notation goes on in the next line.
bool IsContinued(std::string_view notation);

// Empty when a notation, with its lines joined, is damaged.
std::optional<RegistryValue> ParseValue(std::string_view notation);

// The lines of a value: a text that ends in its only NUL in quotes, four bytes of a number as "dword:", all else in
// hexadecimal bytes.
std::vector<std::string> ValueLines(std::string_view name, const RegistryValue& value);

}  // namespace ledgix::services
