#include "amount_text.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "conversions.h"
#include "digit_groups.h"
#include "runtime_error.h"

namespace ledgix::controls {

namespace {

constexpr std::string_view kPlainCharacters = "0123456789.-";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBlanks = " \t\r\n";

// The part before the decimal point and the exponent holds commas only between groups of three.
bool HasProperGroups(std::string_view number) {
    std::vector<std::string> runs(1);
    for (const char c : number.substr(0, number.find_first_of(".eEdD"))) {
        if (c == ',')
            runs.emplace_back();
        else if (kDigits.find(c) != std::string_view::npos)
            runs.back().push_back(c);
    }
    return runs.size() == 1 || AreDigitGroups(runs);
}

bool IsAmount(std::string_view text) {
    return runtime::IsNumeric(text) && HasProperGroups(text);
}

std::string LeadingAmount(std::string_view text) {
    try {
        return runtime::ToText(runtime::LeadingNumber(text));
    } catch (const runtime::RuntimeError&) {
        return "0";
    }
}

// Digits with the decimal point `shift` places further right.
std::string ShiftPoint(const std::string& digits, int shift) {
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string all = digits;
    std::erase(all, '.');
    const auto at = static_cast<std::ptrdiff_t>(point) + shift;
    if (at <= 0)
        return "0." + std::string(static_cast<std::size_t>(-at), '0') + all;
    const auto whole = static_cast<std::size_t>(at);
    if (whole >= all.size())
        return all + std::string(whole - all.size(), '0');
    return all.substr(0, whole) + "." + all.substr(whole);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// A number in digits, point and minus sign alone.
std::string WrittenOut(std::string_view number) {
    if (AmountValue(number) == 0)
        return "0";
    number = Trimmed(number);
    const bool negative = number.front() == '-' || number.back() == '-';
    const std::size_t mark = std::min(number.find_first_of("eEdD"), number.size());
    int exponent = 0;
    if (mark < number.size()) {
        const std::size_t digits = mark + (number[mark + 1] == '+' ? 2 : 1);
        std::from_chars(number.data() + digits, number.data() + number.size(), exponent);
    }
    std::string mantissa(number.substr(0, mark));
    std::erase_if(mantissa, [](char c) { return c != '.' && kDigits.find(c) == std::string_view::npos; });
    return (negative ? "-" : "") + (exponent == 0 ? mantissa : ShiftPoint(mantissa, exponent));
}

void MoveMinusToFront(std::string& text, bool allow_negative) {
    if (text.find('-') == std::string::npos)
        return;
    if (text.front() != '-') {
        std::erase(text, '-');
        text.insert(text.begin(), '-');
    }
    if (!allow_negative)
        text.erase(0, 1);
}

void CutDecimals(std::string& text, int decimal_places) {
    const std::size_t point = text.find('.');
    if (point == std::string::npos)
        return;
    const auto kept = static_cast<std::size_t>(std::max(decimal_places, 0));
    text.resize(std::min(text.size(), point + 1 + kept));
    if (kept == 0)
        text.pop_back();
}

}  // namespace

std::string CleanAmount(std::string_view text, const AmountLimits& limits) {
    std::string kept(text);
    if (!IsAmount(kept))
        kept = LeadingAmount(kept);
    if (kept.find_first_not_of(kPlainCharacters) != std::string::npos)
        kept = WrittenOut(kept);
    if (kept.size() > 1 && kept.front() == '0')
        kept.erase(0, 1);
    MoveMinusToFront(kept, limits.allow_negative);
    CutDecimals(kept, limits.decimal_places);
    return kept.empty() ? "0" : kept;
}

std::string CleanAssignedAmount(std::string_view text, char decimal_separator, const AmountLimits& limits) {
    const bool single_comma =
        std::count(text.begin(), text.end(), ',') == 1 && text.find('.') == std::string_view::npos;
    if (decimal_separator == ',' && single_comma)
        return CleanAmount(ExchangeSeparators(text, decimal_separator), limits);
    return CleanAmount(text, limits);
}

double AmountValue(std::string_view text) {
    try {
        return runtime::ParseNumber(text).value_or(0);
    } catch (const runtime::RuntimeError&) {
        return 0;
    }
}

std::string ExchangeSeparators(std::string_view text, char decimal_separator) {
    std::string exchanged(text);
    if (decimal_separator == ',')
        for (char& c : exchanged)
            c = c == ',' ? '.' : c == '.' ? ',' : c;
    return exchanged;
}

}  // namespace ledgix::controls
