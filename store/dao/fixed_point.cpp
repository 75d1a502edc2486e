#include "fixed_point.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "conversions.h"

namespace ledgix::dao {

namespace {

constexpr std::uint8_t kCurrencyScale = 4;
constexpr std::size_t kCurrencyDigits = 19;
constexpr std::size_t kMostDigits = 28;
// A power of ten beyond which a number is zero, or too large for any type, however many digits are written.
constexpr std::int64_t kFarExponent = 1'000'000'000;

// digits times ten to the power of exponent; no zeros in front.
struct Digits {
    bool negative = false;
    std::string digits;
    std::int64_t exponent = 0;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsSign(char c) {
    return c == '+' || c == '-';
}

// The power of ten behind an E or D.
std::int64_t ParseExponent(std::string_view text) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int64_t exponent = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (result.ec == std::errc::result_out_of_range)
        return text.starts_with('-') ? -kFarExponent : kFarExponent;
    return std::clamp(exponent, -kFarExponent, kFarExponent);
}

// Takes the blanks around a number and its sign, which may stand before or behind it. True for a minus.
bool TakeSign(std::string_view& number) {
    constexpr std::string_view kBlanks = " \t\r\n";
    number.remove_prefix(std::min(number.find_first_not_of(kBlanks), number.size()));
    number = number.substr(0, number.find_last_not_of(kBlanks) + 1);
    char sign = '+';
    if (!number.empty() && IsSign(number.front())) {
        sign = number.front();
        number.remove_prefix(1);
    } else if (!number.empty() && IsSign(number.back())) {
        sign = number.back();
        number.remove_suffix(1);
    }
    return sign == '-';
}

// Nothing when the text is no number.
std::optional<Digits> SplitNumber(std::string_view number) {
    if (!runtime::IsNumeric(number))
        return std::nullopt;
    Digits result;
    result.negative = TakeSign(number);
    const std::size_t mark = std::min(number.find_first_of("eEdD"), number.size());
    bool behind_point = false;
    for (const char c : number.substr(0, mark)) {
        behind_point = behind_point || c == '.';
        if (!IsDigit(c))
            continue;
        if (c != '0' || !result.digits.empty())
            result.digits.push_back(c);
        result.exponent -= behind_point ? 1 : 0;
    }
    if (mark < number.size())
        result.exponent += ParseExponent(number.substr(mark + 1));
    return result;
}

// Whether digits that are dropped behind `kept` make the number before them one larger.
bool RoundsUp(const std::string& digits, std::size_t kept) {
    if (digits[kept] != '5')
        return digits[kept] > '5';
    const bool exactly_half = digits.find_first_not_of('0', kept + 1) == std::string::npos;
    return !exactly_half || (kept > 0 && (digits[kept - 1] - '0') % 2 != 0);
}

void AddOne(std::string& digits) {
    std::size_t at = digits.size();
    while (at > 0 && digits[at - 1] == '9')
        digits[--at] = '0';
    if (at == 0)
        digits.insert(0, 1, '1');
    else
        ++digits[at - 1];
}

// The number times ten to the power of scale, as whole digits; nothing when they are more than `most`.
std::optional<std::string> WholeDigits(const Digits& number, std::size_t scale, std::size_t most) {
    std::string digits = number.digits;
    const std::int64_t shift = number.exponent + static_cast<std::int64_t>(scale);
    const std::int64_t count = static_cast<std::int64_t>(digits.size()) + shift;
    if (digits.empty() || count < 0)
        return std::string();
    if (count > static_cast<std::int64_t>(most))
        return std::nullopt;
    if (shift >= 0) {
        digits.append(static_cast<std::size_t>(shift), '0');
        return digits;
    }
    const auto kept = static_cast<std::size_t>(count);
    const bool up = RoundsUp(digits, kept);
    digits.resize(kept);
    if (up)
        AddOne(digits);
    return digits.size() > most ? std::nullopt : std::optional(digits);
}

// magnitude times ten plus the digit; it must fit.
void AppendDigit(std::array<std::uint32_t, 4>& magnitude, char digit) {
    std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
    for (auto word = magnitude.rbegin(); word != magnitude.rend(); ++word) {
        carry += std::uint64_t{*word} * 10;
        *word = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
}

}  // namespace

std::optional<runtime::Decimal> ParseDecimal(std::string_view number, std::uint8_t precision, std::uint8_t scale) {
    const std::optional<Digits> split = SplitNumber(number);
    const auto digits =
        split ? WholeDigits(*split, scale, std::min<std::size_t>(precision, kMostDigits)) : std::nullopt;
    if (!digits)
        return std::nullopt;
    runtime::Decimal result{split->negative && !digits->empty(), scale, {}};
    for (const char digit : *digits)
        AppendDigit(result.magnitude, digit);
    return result;
}

std::optional<runtime::Currency> ParseCurrency(std::string_view number) {
    const std::optional<Digits> split = SplitNumber(number);
    const auto digits = split ? WholeDigits(*split, kCurrencyScale, kCurrencyDigits) : std::nullopt;
    if (!digits)
        return std::nullopt;
    const std::string signed_digits = (split->negative ? "-" : "") + (digits->empty() ? "0" : *digits);
    runtime::Currency result;
    const auto end = signed_digits.data() + signed_digits.size();
    if (std::from_chars(signed_digits.data(), end, result.ten_thousandths).ec != std::errc())
        return std::nullopt;
    return result;
}

}  // namespace ledgix::dao
