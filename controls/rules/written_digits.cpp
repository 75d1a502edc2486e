#include "written_digits.h"

#include <algorithm>
#include <string_view>

namespace ledgix::controls {

char AsciiDigit(char32_t character) {
    for (const char32_t zero : {U'0', U'\uFF10', U'\u0660', U'\u06F0', U'\u0966'})
        if (character >= zero && character < zero + 10)
            return static_cast<char>('0' + (character - zero));
    return '\0';
}

bool IsMinusSign(char32_t character) {
    constexpr std::u32string_view kSigns = U"-\u2212\u2013\uFE63\uFF0D";
    return kSigns.find(character) != std::u32string_view::npos;
}

bool IsBlank(char32_t character) {
    constexpr std::u32string_view kBlanks = U" \t\r\n\u00A0\u202F\u205F\u3000";
    return kBlanks.find(character) != std::u32string_view::npos || (character >= 0x2000 && character <= 0x200A);
}

bool IsInvisible(char32_t character) {
    return character == 0xFEFF || (character >= 0x200B && character <= 0x200F) ||
           (character >= 0x202A && character <= 0x202E) || (character >= 0x2060 && character <= 0x2069);
}

}  // namespace ledgix::controls
