#pragma once

// Characters that people and other programs write numbers with.
namespace ledgix::controls {

// '0' to '9' for a digit: ASCII, full-width, Arabic, Persian or Devanagari. 0 for every other character.
char AsciiDigit(char32_t character);

// Hyphen-minus, the minus sign proper, full-width and small minus, en dash.
bool IsMinusSign(char32_t character);

// Blanks of any width, the unbreakable ones included; also tabs and line breaks.
bool IsBlank(char32_t character);

// Characters without a width: byte order mark, joiners and marks of writing direction.
bool IsInvisible(char32_t character);

}  // namespace ledgix::controls
