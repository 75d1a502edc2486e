#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace ledgix::runtime {

struct Null {
    bool operator==(const Null&) const = default;
};

// An amount counted in ten-thousandths of a unit.
struct Currency {
    std::int64_t ten_thousandths = 0;
    bool operator==(const Currency&) const = default;
};

// Days since 30 December 1899. The fraction is the time of day, counted forwards for negative days too.
struct Date {
    double days = 0;
    bool operator==(const Date&) const = default;
};

struct Guid {
    std::array<std::uint8_t, 16> bytes{};  // in display order
    bool operator==(const Guid&) const = default;
};

// magnitude / 10^scale, at most 28 digits; words most significant first.
struct Decimal {
    bool negative = false;
    std::uint8_t scale = 0;
    std::array<std::uint32_t, 4> magnitude{};
    bool operator==(const Decimal&) const = default;
};

using Binary = std::vector<std::uint8_t>;

// A value of any type that a field can hold. Text is UTF-8.
using Variant = std::variant<Null, bool, std::uint8_t, std::int16_t, std::int32_t, Currency, float, double, Date,
                             std::string, Binary, Guid, Decimal>;

inline bool IsNull(const Variant& value) {
    return std::holds_alternative<Null>(value);
}

}  // namespace ledgix::runtime
