#include "text_codec.h"

#include <algorithm>
#include <string_view>

#include "byte_order.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

constexpr std::uint8_t kCompressed[]{0xFF, 0xFE};
constexpr std::size_t kShortestCompressed = 3;  // characters

// Not the zero byte, which compressed text has a use of its own for.
bool IsAscii(char character) {
    return character > 0 && static_cast<unsigned char>(character) < 0x80;
}

void AppendCodePoint(std::string& out, char32_t code_point) {
    if (code_point < 0x80)
        out.push_back(static_cast<char>(code_point));
    else
        runtime::AppendUtf8(out, code_point);
}

bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

void AppendUtf16(std::string& out, Bytes stored) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::size_t at = 0;
    while (at + 2 <= stored.size()) {
        char32_t unit = LoadU16(stored, at);
        at += 2;
        if (IsHighSurrogate(unit) && at + 2 <= stored.size() && IsLowSurrogate(LoadU16(stored, at))) {
            unit = 0x10000 + ((unit & 0x3FF) << 10) + (LoadU16(stored, at) & 0x3FFU);
            at += 2;
        } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
            unit = kReplacement;
        }
        AppendCodePoint(out, unit);
    }
    if (at < stored.size())
        AppendCodePoint(out, kReplacement);
}

// Bytes of one character each; a zero byte goes over to UTF-16, and a zero byte at the start of a unit goes back.
void AppendCompressed(std::string& out, Bytes stored) {
    std::size_t at = 0;
    while (at < stored.size()) {
        for (; at < stored.size() && stored[at] != 0; ++at)
            AppendCodePoint(out, stored[at]);
        const std::size_t wide = ++at;
        while (at < stored.size() && stored[at] != 0)
            at += 2;
        if (wide < stored.size())
            AppendUtf16(out, stored.subspan(wide, std::min(at, stored.size()) - wide));
        ++at;
    }
}

std::string DecodeCodePage(Bytes stored) {
    const std::string_view text(reinterpret_cast<const char*>(stored.data()), stored.size());
    const bool ascii = std::all_of(stored.begin(), stored.end(), [](std::uint8_t byte) { return byte < 0x80; });
    return ascii ? std::string(text) : runtime::CodePage1252ToUtf8(text);
}

bool IsCompressible(std::u16string_view text) {
    return text.size() >= kShortestCompressed &&
           std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= 0x01 && unit <= 0xFF; });
}

std::vector<std::uint8_t> EncodeCompressed(std::u16string_view text) {
    std::vector<std::uint8_t> stored(std::begin(kCompressed), std::end(kCompressed));
    for (const char16_t unit : text)
        stored.push_back(static_cast<std::uint8_t>(unit));
    return stored;
}

std::vector<std::uint8_t> EncodeUtf16(std::u16string_view text) {
    std::vector<std::uint8_t> stored(2 * text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        StoreLittle(stored, 2 * i, static_cast<std::uint16_t>(text[i]));
    return stored;
}

std::vector<std::uint8_t> EncodeCodePage(std::string_view text) {
    if (!runtime::FitsCodePage1252(text))
        runtime::RaiseEngineError(runtime::ErrorNumber::kFeatureNotAvailable,
                                  "Text can't be stored when it has characters that the file's code page lacks.");
    const std::string stored = runtime::ToCodePage1252(text);
    return {stored.begin(), stored.end()};
}

}  // namespace

std::string DecodeText(const Format& format, Bytes stored) {
    const bool compressed = format.generation == Generation::kJet4 && stored.size() >= 2 &&
                            stored[0] == kCompressed[0] && stored[1] == kCompressed[1];
    if (!compressed)
        return DecodeName(format, stored);
    std::string text;
    text.reserve(stored.size());
    AppendCompressed(text, stored.subspan(2));
    return text;
}

std::string DecodeName(const Format& format, Bytes stored) {
    if (format.generation == Generation::kJet3)
        return DecodeCodePage(stored);
    std::string text;
    text.reserve(stored.size() / 2);
    AppendUtf16(text, stored);
    return text;
}

std::vector<std::uint8_t> EncodeText(const Format& format, std::string_view text, bool may_be_compressed) {
    constexpr char16_t kByteOrderMark = 0xFEFF;
    if (format.generation == Generation::kJet3)
        return EncodeCodePage(text);
    if (may_be_compressed && text.size() >= kShortestCompressed && std::all_of(text.begin(), text.end(), IsAscii)) {
        std::vector<std::uint8_t> stored(std::begin(kCompressed), std::end(kCompressed));
        stored.insert(stored.end(), text.begin(), text.end());
        return stored;
    }
    const std::u16string units = runtime::ToUtf16(text);
    if (units.starts_with(kByteOrderMark))
        runtime::RaiseEngineError(runtime::ErrorNumber::kFeatureNotAvailable,
                                  "Text can't be stored when it begins with a byte order mark.");
    return may_be_compressed && IsCompressible(units) ? EncodeCompressed(units) : EncodeUtf16(units);
}

std::vector<std::uint8_t> EncodeName(const Format& format, std::string_view name) {
    return format.generation == Generation::kJet3 ? EncodeCodePage(name) : EncodeUtf16(runtime::ToUtf16(name));
}

}  // namespace ledgix::jet
