#include "amount_edit.h"

#include "amount_keys.h"
#include "conversions.h"
#include "pasted_amount.h"
#include "runtime_error.h"

namespace ledgix::controls {

namespace {

bool IsBeyondDouble(std::string_view text) {
    try {
        runtime::LeadingNumber(text);
        return false;
    } catch (const runtime::RuntimeError&) {
        return true;
    }
}

std::optional<std::string> Cleaned(std::string_view text, const AmountRules& rules) {
    if (IsBeyondDouble(text))
        return std::nullopt;
    std::string cleaned = CleanAmount(text, rules.limits);
    if (rules.max_length > 0 && cleaned.size() > rules.max_length)
        return std::nullopt;
    return cleaned;
}

// A part of the text is replaced: what it held may be typed again. All of it: the key is judged by the old text.
std::string JudgedText(const EditPoint& at) {
    return at.before.empty() && at.after.empty() ? at.selected : at.before + at.after;
}

// Digits of a text that is one run of them, with at most one decimal separator; empty for any other text.
std::string PlainDigits(std::string_view pasted, const runtime::RegionalSettings& region) {
    const std::optional<std::string> amount = ReadAmount(pasted, region);
    const char separator = DecimalSeparator(region);
    const bool plain = pasted.find_first_not_of(separator == ',' ? "0123456789," : "0123456789.") == std::string::npos;
    return amount && plain ? *amount : std::string();
}

bool IsInParentheses(std::string_view text) {
    return text.find('(') != std::string_view::npos;
}

}  // namespace

std::optional<std::string> TypeKey(const EditPoint& at, char key, const AmountRules& rules) {
    if (!AdmitsKey(key, JudgedText(at), rules.limits))
        return std::nullopt;
    if (key != '-' && at.after.starts_with('-'))
        return std::nullopt;
    return Cleaned(at.before + key + at.after, rules);
}

std::optional<std::string> DropText(std::string_view dropped, const AmountRules& rules,
                                    const runtime::RegionalSettings& region) {
    const std::optional<std::string> amount = ReadAmount(dropped, region);
    if (!amount || (IsInParentheses(dropped) && !rules.limits.allow_negative))
        return std::nullopt;
    return Cleaned(*amount, rules);
}

std::optional<std::string> PasteText(const EditPoint& at, std::string_view pasted, const AmountRules& rules,
                                     const runtime::RegionalSettings& region) {
    const bool over_all = (at.before.empty() && at.after.empty()) || at.text() == "0";
    if (over_all)
        return DropText(pasted, rules, region);
    const std::string digits = PlainDigits(pasted, region);
    const bool second_point =
        digits.find('.') != std::string::npos && !AdmitsKey('.', at.before + at.after, rules.limits);
    if (digits.empty() || second_point || at.after.starts_with('-'))
        return std::nullopt;
    return Cleaned(at.before + digits + at.after, rules);
}

}  // namespace ledgix::controls
