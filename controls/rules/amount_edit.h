#pragma once

#include <optional>

#include "amount_text.h"
#include "regional_settings.h"

namespace ledgix::controls {

// Where the next edit goes: the text of a box (with a decimal point) around its selection or, without one, its caret.
struct EditPoint {
    std::string before;
    std::string selected;
    std::string after;

    std::string text() const { return before + selected + after; }
};

// The rules of one box.
struct AmountRules {
    AmountLimits limits;
    std::size_t max_length = 0;  // characters; 0 = no limit
};

// Each gives the text after the edit, cleaned, or nothing where the edit is refused and the text stays.

// A key as AmountKey gives it. A key behind which the text would stand before its minus sign, be longer than allowed
// or be beyond a double is refused.
std::optional<std::string> TypeKey(const EditPoint& at, char key, const AmountRules& rules);

// Text pasted or composed. Over the whole text, and over a zero, it is what ReadAmount says; amid other digits
// only digits and a decimal separator fit. Parentheses are refused where negatives are not allowed.
std::optional<std::string> PasteText(const EditPoint& at, std::string_view pasted, const AmountRules& rules,
                                     const runtime::RegionalSettings& region);

// Text dropped anywhere on the box: the new amount, whatever was there.
std::optional<std::string> DropText(std::string_view dropped, const AmountRules& rules,
                                    const runtime::RegionalSettings& region);

}  // namespace ledgix::controls
