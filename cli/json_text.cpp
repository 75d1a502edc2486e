#include "json_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "conversions.h"

namespace ledgix::cli {

namespace {

constexpr std::size_t kLongestNumber = 64;
constexpr double kWholeNumbers = 1e15;  // below this, whole numbers are written digit by digit

// In the shortest form that reads back the same.
template <class Number>
void AppendNumber(std::string& json, Number number) {
    std::array<char, kLongestNumber> buffer{};
    char* const end = buffer.data() + buffer.size();
    if constexpr (std::is_floating_point_v<Number>) {
        if (!std::isfinite(number)) {
            json += "null";
            return;
        }
        const bool zero_with_sign = number == 0 && std::signbit(number);
        if (std::abs(number) < kWholeNumbers && std::trunc(number) == number && !zero_with_sign) {
            AppendNumber(json, static_cast<std::int64_t>(number));
            return;
        }
    }
    json.append(buffer.data(), std::to_chars(buffer.data(), end, number).ptr);
}

bool IsPlain(char character) {
    return character >= ' ' && character < 0x7F && character != '"' && character != '\\';
}

void AppendText(std::string& json, std::string_view text) {
    if (!std::all_of(text.begin(), text.end(), IsPlain)) {
        json += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        return;
    }
    json += '"';
    json += text;
    json += '"';
}

}  // namespace

void AppendJson(std::string& json, const runtime::Variant& value) {
    std::visit(
        [&](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, runtime::Null>)
                json += "null";
            else if constexpr (std::is_same_v<Held, bool>)
                json += held ? "true" : "false";
            else if constexpr (std::is_same_v<Held, std::uint8_t>)
                AppendNumber(json, int{held});
            else if constexpr (std::is_arithmetic_v<Held>)
                AppendNumber(json, held);
            else if constexpr (std::is_same_v<Held, runtime::Currency> || std::is_same_v<Held, runtime::Decimal>)
                json += runtime::ToText(held);
            else if constexpr (std::is_same_v<Held, std::string>)
                AppendText(json, held);
            else
                AppendText(json, runtime::ToText(value));
        },
        value);
}

std::string JsonText(std::string_view text) {
    std::string json;
    AppendText(json, text);
    return json;
}

std::string JsonText(const runtime::Variant& value) {
    std::string json;
    AppendJson(json, value);
    return json;
}

}  // namespace ledgix::cli
