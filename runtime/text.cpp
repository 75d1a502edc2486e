#include "text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ledgix::runtime {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Code page 1252 from 0x80 to 0x9F. The five unassigned bytes stand for the C1 controls of the same number.
constexpr std::array<char16_t, 32> kCodePage1252{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Reads one code point at `at` and moves behind it.
char32_t NextCodePoint(std::string_view utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    if (lead < 0x80)
        return lead;
    const int more = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 && lead < 0xF0 ? 2 : lead >= 0xC2 && lead < 0xE0;
    if (more == 0)
        return kReplacement;
    char32_t code_point = lead & (0x3FU >> more);
    for (int i = 0; i < more; ++i) {
        if (at >= utf8.size() || !IsContinuation(static_cast<unsigned char>(utf8[at])))
            return kReplacement;
        code_point = (code_point << 6) | (static_cast<unsigned char>(utf8[at++]) & 0x3FU);
    }
    constexpr std::array<char32_t, 4> kSmallest{0, 0x80, 0x800, 0x10000};
    const bool surrogate = code_point >= 0xD800 && code_point < 0xE000;
    if (code_point < kSmallest[static_cast<std::size_t>(more)] || code_point > 0x10FFFF || surrogate)
        return kReplacement;
    return code_point;
}

// The byte of a character in code page 1252, or -1.
int CodePage1252Byte(char32_t code_point) {
    if (code_point < 0x80 || (code_point >= 0xA0 && code_point <= 0xFF))
        return static_cast<int>(code_point);
    const auto found = std::find(kCodePage1252.begin(), kCodePage1252.end(), code_point);
    return found == kCodePage1252.end() ? -1 : 0x80 + static_cast<int>(found - kCodePage1252.begin());
}

}  // namespace

void AppendUtf8(std::string& out, char32_t code_point) {
    const auto tail = [&](int shift) { out.push_back(static_cast<char>(0x80 | ((code_point >> shift) & 0x3F))); };
    if (code_point < 0x80) {
        out.push_back(static_cast<char>(code_point));
    } else if (code_point < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code_point >> 6)));
        tail(0);
    } else if (code_point < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (code_point >> 12)));
        tail(6);
        tail(0);
    } else {
        out.push_back(static_cast<char>(0xF0 | (code_point >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::u32string ToUtf32(std::string_view utf8) {
    std::u32string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        out.push_back(NextCodePoint(utf8, at));
    return out;
}

std::string ToUtf8(std::u32string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char32_t code_point : text)
        AppendUtf8(out, code_point);
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code_point = text[i];
        const bool high = code_point >= 0xD800 && code_point < 0xDC00;
        if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000)
            code_point = 0x10000 + ((code_point - 0xD800) << 10) + (text[++i] - 0xDC00U);
        else if (code_point >= 0xD800 && code_point < 0xE000)
            code_point = kReplacement;
        AppendUtf8(out, code_point);
    }
    return out;
}

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (const char32_t code_point : ToUtf32(utf8)) {
        if (code_point < 0x10000) {
            out.push_back(static_cast<char16_t>(code_point));
        } else {
            out.push_back(static_cast<char16_t>(0xD800 + ((code_point - 0x10000) >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((code_point - 0x10000) & 0x3FF)));
        }
    }
    return out;
}

std::string ToCodePage1252(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (const char32_t code_point : ToUtf32(utf8)) {
        const int byte = CodePage1252Byte(code_point);
        out.push_back(byte < 0 ? '?' : static_cast<char>(byte));
    }
    return out;
}

std::string CodePage1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kCodePage1252[byte - 0x80U] : byte);
    }
    return out;
}

bool FitsCodePage1252(std::string_view utf8) {
    const std::u32string text = ToUtf32(utf8);
    return std::all_of(text.begin(), text.end(), [](char32_t c) { return CodePage1252Byte(c) >= 0; });
}

char32_t FoldCase(char32_t c) {
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? c + 32 : c;
    if (c >= 0xC0 && c <= 0xDE)
        return c == 0xD7 ? c : c + 32;
    if (c == 0x178)
        return 0xFF;
    const bool pair_starts_odd = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (c >= 0x100 && c <= 0x17E && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149)
        return (c % 2 == 1) == pair_starts_odd ? c + 1 : c;
    if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2)
        return c + 32;
    if (c >= 0x400 && c <= 0x40F)
        return c + 80;
    if (c >= 0x410 && c <= 0x42F)
        return c + 32;
    return c;
}

std::string FoldCase(std::string_view utf8) {
    std::u32string text = ToUtf32(utf8);
    for (char32_t& c : text)
        c = FoldCase(c);
    return ToUtf8(text);
}

int CompareIgnoringCase(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const char32_t x = FoldCase(NextCodePoint(a, i));
        const char32_t y = FoldCase(NextCodePoint(b, j));
        if (x != y)
            return x < y ? -1 : 1;
    }
    return (i < a.size() ? 1 : 0) - (j < b.size() ? 1 : 0);
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return CompareIgnoringCase(a, b) == 0;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(from, at)) != std::string_view::npos; at = found + from.size()) {
        out.append(text, at, found - at);
        out.append(to);
    }
    out.append(text, at);
    return out;
}

}  // namespace ledgix::runtime
