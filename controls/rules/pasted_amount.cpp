#include "pasted_amount.h"

#include <algorithm>
#include <vector>

#include "conversions.h"
#include "digit_groups.h"
#include "text.h"
#include "written_digits.h"

namespace ledgix::controls {

namespace {

constexpr std::size_t kCodeLength = 3;

bool IsApostrophe(char32_t c) {
    return c == U'\'' || c == U'\u2019' || c == U'\uFF07';
}

bool IsCurrencySign(char32_t c) {
    return c == U'$' || (c >= 0xA2 && c <= 0xA5) || (c >= 0x20A0 && c <= 0x20CF) || c == U'\uFF04' || c == U'\uFFE5';
}

bool IsCapital(char32_t c) {
    return c >= U'A' && c <= U'Z';
}

// What may stand in the name of a currency; everything else belongs to the number.
bool IsCurrencyPart(char32_t c) {
    return IsCapital(c) || IsCurrencySign(c);
}

// "$", "US$", "EUR"
bool IsCurrency(std::u32string_view name) {
    const bool code = std::all_of(name.begin(), name.end(), IsCapital);
    if (code)
        return name.size() == kCodeLength;
    return IsCurrencySign(name.back()) && name.size() <= kCodeLength &&
           std::all_of(name.begin(), name.end() - 1, IsCapital);
}

std::u32string_view Trimmed(std::u32string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// Takes sign and currency off both ends of a text, each of them once; the number is left.
class Surroundings {
public:
    Surroundings(std::u32string_view text, std::u32string_view own_currency)
        : rest_(Trimmed(text)), own_currency_(Trimmed(own_currency)) {
        while (!rest_.empty() && (TakeSign() || TakeCurrency()))
            rest_ = Trimmed(rest_);
    }

    std::u32string_view rest() const { return rest_; }
    bool negative() const { return negative_; }

private:
    bool TakeSign() {
        if (signed_)
            return false;
        if (rest_.size() > 2 && rest_.front() == U'(' && rest_.back() == U')') {
            rest_ = rest_.substr(1, rest_.size() - 2);
            negative_ = true;
        } else if (rest_.front() == U'+' || IsMinusSign(rest_.front())) {
            negative_ = rest_.front() != U'+';
            rest_.remove_prefix(1);
        } else if (IsMinusSign(rest_.back())) {
            negative_ = true;
            rest_.remove_suffix(1);
        } else {
            return false;
        }
        return signed_ = true;
    }

    bool TakeCurrency() {
        if (has_currency_)
            return false;
        const auto [front, back] = CurrencyLengths();
        rest_.remove_prefix(front);
        if (front == 0)
            rest_.remove_suffix(back);
        return has_currency_ = front + back > 0;
    }

    // Characters of a currency at the front and at the back.
    std::pair<std::size_t, std::size_t> CurrencyLengths() const {
        if (!own_currency_.empty() && rest_.starts_with(own_currency_))
            return {own_currency_.size(), 0};
        if (!own_currency_.empty() && rest_.ends_with(own_currency_))
            return {0, own_currency_.size()};
        const auto front = std::find_if_not(rest_.begin(), rest_.end(), IsCurrencyPart) - rest_.begin();
        const auto back = std::find_if_not(rest_.rbegin(), rest_.rend(), IsCurrencyPart) - rest_.rbegin();
        const auto before = static_cast<std::size_t>(front);
        const auto behind = static_cast<std::size_t>(back);
        return {before > 0 && IsCurrency(rest_.substr(0, before)) ? before : 0,
                behind > 0 && IsCurrency(rest_.substr(rest_.size() - behind)) ? behind : 0};
    }

    std::u32string_view rest_;
    std::u32string_view own_currency_;
    bool signed_ = false;
    bool negative_ = false;
    bool has_currency_ = false;
};

// Runs of digits and what stands between them: '.', ',', ' ' or '\''; one separator less than runs.
struct DigitRuns {
    std::vector<std::string> runs{std::string()};
    std::string separators;
};

std::optional<DigitRuns> SplitDigits(std::u32string_view number) {
    DigitRuns split;
    for (const char32_t c : number) {
        if (const char digit = AsciiDigit(c)) {
            split.runs.back().push_back(digit);
            continue;
        }
        const bool line_or_cell = c == U'\t' || c == U'\r' || c == U'\n';
        if (IsBlank(c) && !line_or_cell)
            split.separators.push_back(' ');
        else if (IsApostrophe(c))
            split.separators.push_back('\'');
        else if (c == U'.' || c == U',')
            split.separators.push_back(static_cast<char>(c));
        else
            return std::nullopt;
        split.runs.emplace_back();
    }
    if (split.runs.back().empty())
        return std::nullopt;
    return split;
}

bool AllAlike(std::string_view separators) {
    return separators.find_first_not_of(separators.front()) == std::string_view::npos;
}

std::string Joined(const std::vector<std::string>& runs) {
    std::string digits;
    for (const std::string& run : runs)
        digits += run;
    return digits;
}

// The last separator divides off the decimals; the others, if any, are grouping of one other kind.
bool EndsInDecimals(const DigitRuns& number, char decimal_separator) {
    const char last = number.separators.back();
    if (number.separators.size() == 1)
        return last == decimal_separator;
    const std::string_view grouping = std::string_view(number.separators).substr(0, number.separators.size() - 1);
    return (last == '.' || last == ',') && last != grouping.front() && AllAlike(grouping);
}

std::optional<std::string> NumberOf(DigitRuns number, char decimal_separator) {
    if (number.separators.empty())
        return number.runs.front();
    if (!EndsInDecimals(number, decimal_separator)) {
        const bool grouped = AllAlike(number.separators) && AreDigitGroups(number.runs);
        return grouped ? std::optional(Joined(number.runs)) : std::nullopt;
    }
    const std::string decimals = number.runs.back();
    number.runs.pop_back();
    if (number.runs.size() > 1 && !AreDigitGroups(number.runs))
        return std::nullopt;
    return Joined(number.runs) + "." + decimals;
}

}  // namespace

char DecimalSeparator(const runtime::RegionalSettings& region) {
    return region.decimal_separator == "," ? ',' : '.';
}

std::optional<std::string> ReadAmount(std::string_view text, const runtime::RegionalSettings& region) {
    std::u32string characters = runtime::ToUtf32(text);
    std::erase_if(characters, IsInvisible);
    const std::u32string own_currency = runtime::ToUtf32(region.currency_symbol);
    const Surroundings found(characters, own_currency);
    const std::optional<DigitRuns> split = SplitDigits(found.rest());
    if (!split)
        return std::nullopt;
    const std::optional<std::string> number = NumberOf(*split, DecimalSeparator(region));
    if (!number || !runtime::IsNumeric(*number))
        return std::nullopt;
    return (found.negative() ? "-" : "") + *number;
}

}  // namespace ledgix::controls
