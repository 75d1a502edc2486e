#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Text is UTF-8 throughout the program; these are the crossings to other encodings, and comparison without case.
namespace ledgix::runtime {

// One character per code point. Bytes that are no UTF-8 become U+FFFD.
std::u32string ToUtf32(std::string_view utf8);
std::string ToUtf8(std::u32string_view text);
void AppendUtf8(std::string& out, char32_t code_point);

// Unpaired surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);
std::u16string ToUtf16(std::string_view utf8);

// The Western European code page. Characters that it lacks become '?'.
std::string ToCodePage1252(std::string_view utf8);
std::string CodePage1252ToUtf8(std::string_view bytes);
// True when every character of the text is in the code page.
bool FitsCodePage1252(std::string_view utf8);

// Lower case of ASCII, Latin-1 and Latin Extended-A letters, Greek and Cyrillic; other characters as they are.
char32_t FoldCase(char32_t code_point);
std::string FoldCase(std::string_view utf8);
bool EqualsIgnoringCase(std::string_view a, std::string_view b);
// Below 0, 0 or above 0, by code points of the folded texts.
int CompareIgnoringCase(std::string_view a, std::string_view b);

// Orders keys of a map without regard to case.
struct LessIgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return CompareIgnoringCase(a, b) < 0; }
};

// Every `from` replaced by `to`, left to right; the comparison is exact.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

inline constexpr std::string_view kLineBreak = "\r\n";

}  // namespace ledgix::runtime
