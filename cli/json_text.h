#pragma once

#include <string>
#include <string_view>

#include "variant.h"

namespace ledgix::cli {

// A value as JSON: numbers in their shortest form that reads back the same (a single as a single), dates in ISO 8601,
// binary data and GUIDs as text, Null and what is no finite number as null.
std::string JsonText(const runtime::Variant& value);
std::string JsonText(std::string_view text);

// The same, behind what `json` holds already.
void AppendJson(std::string& json, const runtime::Variant& value);

}  // namespace ledgix::cli
