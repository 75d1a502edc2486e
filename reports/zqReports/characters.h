#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ledgix::zq {

struct Character {
    char32_t code_point = 0;
    std::size_t size = 0;  // its bytes
};

// The character that starts at byte `at`, which must be inside the text. A byte that starts no valid UTF-8 sequence is
// a character of its own, U+FFFD.
Character CharacterAt(std::string_view text, std::size_t at);

// Bytes of the line break at `at`: 2 for CR LF, 1 for a lone CR or LF, 0 for anything else.
std::size_t LineBreakAt(std::string_view text, std::size_t at);

// A space or tab: where lines may be broken.
bool IsBlank(char32_t code_point);

// Columns that the character takes in a terminal: 0 for combining marks, 2 for East Asian wide letters and pictographs.
int TerminalColumns(char32_t code_point);

// The text as it can stand on one line: without the blanks and line breaks at its end, and with a blank for each other
// line break and control character. Blanks of special widths become no-break spaces, which every typeface has.
std::string OneLine(std::string_view text);

}  // namespace ledgix::zq
