#include "formats.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "rounding.h"

namespace ledgix::runtime {

namespace {

constexpr std::size_t kLongestFixed = 400;  // a double has up to 309 digits before the point

std::string Grouped(const std::string& digits, const RegionalSettings& region) {
    if (region.group_sizes.empty() || region.group_separator.empty())
        return digits;
    std::string out;
    std::size_t end = digits.size();
    for (std::size_t group = 0;; ++group) {
        const int size = region.group_sizes[std::min(group, region.group_sizes.size() - 1)];
        const auto count = static_cast<std::size_t>(size);
        if (end <= count)
            return digits.substr(0, end) + out;
        out = region.group_separator + digits.substr(end - count, count) + out;
        end -= count;
    }
}

std::string WithSymbol(const std::string& amount, const std::string& symbol, const RegionalSettings& region) {
    const std::string space = region.space_between ? " " : "";
    return region.symbol_first ? symbol + space + amount : amount + space + symbol;
}

}  // namespace

std::string FormatTwoDecimals(double value) {
    std::array<char, kLongestFixed> buffer{};
    const double rounded = Round(CheckOverflow(value), 2);
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded, std::chars_format::fixed, 2);
    return {buffer.data(), result.ptr};
}

std::string FormatCurrency(double value, const RegionalSettings& region) {
    const std::string fixed = FormatTwoDecimals(std::abs(value));
    const std::size_t point = fixed.size() - 3;
    const std::string amount =
        Grouped(fixed.substr(0, point), region) + region.decimal_separator + fixed.substr(point + 1);
    if (Round(value, 2) >= 0)
        return WithSymbol(amount, region.currency_symbol, region);
    switch (region.minus) {
        case RegionalSettings::Minus::kParentheses:
            return "(" + WithSymbol(amount, region.currency_symbol, region) + ")";
        case RegionalSettings::Minus::kAfterAll:
            return WithSymbol(amount, region.currency_symbol, region) + "-";
        case RegionalSettings::Minus::kBeforeSymbol:
            return WithSymbol(amount, "-" + region.currency_symbol, region);
        case RegionalSettings::Minus::kAfterSymbol:
            return WithSymbol(amount, region.currency_symbol + "-", region);
        case RegionalSettings::Minus::kBeforeAll:
            break;
    }
    return "-" + WithSymbol(amount, region.currency_symbol, region);
}

}  // namespace ledgix::runtime
