#include "characters.h"

#include <iterator>

#include "text.h"

namespace ledgix::zq {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kNoBreakSpace = 0x00A0;

struct Range {
    char32_t first;
    char32_t last;
};

constexpr Range kZeroWidth[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x200B, 0x200F}, {0x202A, 0x202E},
                                {0x2060, 0x2064}, {0x20D0, 0x20F0}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}};

constexpr Range kDoubleWidth[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                                  {0xF900, 0xFAFF},   {0xFE30, 0xFE4F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                                  {0x1F300, 0x1F64F}, {0x1F680, 0x1F9FF}, {0x20000, 0x3FFFD}};

constexpr Range kSpecialBlanks[] = {{0x2000, 0x200A}, {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}};

template <std::size_t count>
bool IsIn(const Range (&ranges)[count], char32_t code_point) {
    for (const Range& range : ranges)
        if (code_point >= range.first && code_point <= range.last)
            return true;
    return false;
}

bool IsControl(char32_t code_point) {
    return code_point < 0x20 || (code_point >= 0x7F && code_point < 0xA0) || code_point == 0x2028 ||
           code_point == 0x2029;
}

// Length and smallest code point of the sequence that a lead byte announces.
struct Lead {
    std::size_t size;
    char32_t bits;
    char32_t smallest;
};

Lead LeadOf(unsigned char byte) {
    if (byte < 0x80)
        return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0)
        return {2, char32_t(byte & 0x1F), 0x80};
    if (byte >= 0xE0 && byte < 0xF0)
        return {3, char32_t(byte & 0x0F), 0x800};
    if (byte >= 0xF0 && byte < 0xF5)
        return {4, char32_t(byte & 0x07), 0x10000};
    return {0, 0, 0};
}

}  // namespace

Character CharacterAt(std::string_view text, std::size_t at) {
    const Lead lead = LeadOf(static_cast<unsigned char>(text[at]));
    if (lead.size == 0 || lead.size > text.size() - at)
        return {kReplacement, 1};
    char32_t code_point = lead.bits;
    for (std::size_t i = 1; i < lead.size; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0) != 0x80)
            return {kReplacement, 1};
        code_point = code_point << 6 | char32_t(byte & 0x3F);
    }
    const bool is_surrogate = code_point >= 0xD800 && code_point < 0xE000;
    if (code_point < lead.smallest || code_point > 0x10FFFF || is_surrogate)
        return {kReplacement, 1};
    return {code_point, lead.size};
}

std::size_t LineBreakAt(std::string_view text, std::size_t at) {
    if (text[at] == '\n')
        return 1;
    if (text[at] != '\r')
        return 0;
    return at + 1 < text.size() && text[at + 1] == '\n' ? 2 : 1;
}

bool IsBlank(char32_t code_point) {
    return code_point == ' ' || code_point == '\t';
}

int TerminalColumns(char32_t code_point) {
    if (IsIn(kZeroWidth, code_point))
        return 0;
    return IsIn(kDoubleWidth, code_point) ? 2 : 1;
}

std::string OneLine(std::string_view text) {
    while (!text.empty() && (IsBlank(char32_t(text.back())) || text.back() == '\r' || text.back() == '\n'))
        text.remove_suffix(1);
    std::string line;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t line_break = LineBreakAt(text, at);
        const Character c = CharacterAt(text, at);
        if (IsControl(c.code_point))
            line.push_back(' ');
        else
            runtime::AppendUtf8(line, IsIn(kSpecialBlanks, c.code_point) ? kNoBreakSpace : c.code_point);
        at += line_break ? line_break : c.size;
    }
    return line;
}

}  // namespace ledgix::zq
