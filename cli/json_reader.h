#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace ledgix::cli {

// The JSON document that a text holds. Raises RequestRefused for what is no JSON and for numbers beyond a double, with
// line and column, and for a member that an object has twice, with its place.
nlohmann::json ReadJson(std::string_view text);

// The place of a member or an element in messages: "profiles[2].PurchasePrice".
std::string MemberPlace(const std::string& place, std::string_view member);
std::string ElementPlace(const std::string& place, std::size_t position);

}  // namespace ledgix::cli
