#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ledgix::zq {

// Bytes of the text that go on one line of `width` points: up to a word's beginning, up to and with a line break, or
// into a word that is wider than the line. Blanks at the end hang over the edge. At least one character of a text that
// is not empty, never half a character or half a CR LF. Looks at no more than the line and its hanging blanks.
std::size_t FittingLength(std::string_view text, double width, double size, bool bold);

// The whole text as such lines, ready to be drawn. At least one.
std::vector<std::string> WrappedLines(std::string_view text, double width, double size, bool bold);

}  // namespace ledgix::zq
