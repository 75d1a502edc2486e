#include "amount_keys.h"

#include "written_digits.h"

namespace ledgix::controls {

char AmountKey(char32_t key, bool number_pad, char decimal_separator) {
    if (const char digit = AsciiDigit(key))
        return digit;
    if (IsMinusSign(key))
        return '-';
    const bool separator = key == static_cast<char32_t>(decimal_separator) || (number_pad && key == U',');
    return key == U'.' || separator ? '.' : '\0';
}

bool AdmitsKey(char key, std::string_view text, const AmountLimits& limits) {
    if (key == '.')
        return limits.decimal_places > 0 && text.find('.') == std::string_view::npos;
    if (key == '-')
        return limits.allow_negative && text.find('-') == std::string_view::npos;
    return key >= '0' && key <= '9';
}

}  // namespace ledgix::controls
