#include "json_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "conversions.h"

namespace ledgix::cli {

namespace {

constexpr std::size_t kLongestNumber = 64;

template <class Number>
std::string Shortest(Number number) {
    if constexpr (std::is_floating_point_v<Number>)
        if (!std::isfinite(number))
            return "null";
    std::array<char, kLongestNumber> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

}  // namespace

std::string JsonText(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string JsonText(const runtime::Variant& value) {
    return std::visit(
        [&](const auto& held) -> std::string {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, runtime::Null>)
                return "null";
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? "true" : "false";
            else if constexpr (std::is_same_v<Held, std::uint8_t>)
                return std::to_string(held);
            else if constexpr (std::is_arithmetic_v<Held>)
                return Shortest(held);
            else if constexpr (std::is_same_v<Held, runtime::Currency> || std::is_same_v<Held, runtime::Decimal>)
                return runtime::ToText(held);
            else
                return JsonText(std::string_view(runtime::ToText(value)));
        },
        value);
}

}  // namespace ledgix::cli
