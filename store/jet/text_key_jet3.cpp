#include <array>
#include <cstddef>
#include <string>

#include "runtime_error.h"
#include "text.h"
#include "text_key.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostBytes = 255;
constexpr std::uint8_t kPlainLetter = 2;  // in the place of the weight of an accent

// What a byte of code page 1252 contributes: one or two bytes in its place (0: none), and the weight of its accent (0:
// none).
struct Code {
    std::uint16_t in_place = 0;
    std::uint8_t accent = 0;
};

constexpr std::string_view kLettersWithAccents = "ACEINOSUYaceinosuy";

// From 0x20 to 0x7F.
constexpr std::array<std::uint8_t, 96> kAscii{
    0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0x19, 0x1A, 0x1B, 0x1C, 0x1D, 0x1E, 0x1F, 0x20,   // 2x
    0x56, 0x57, 0x58, 0x59, 0x5A, 0x5B, 0x5C, 0x5D, 0x5E, 0x5F, 0x21, 0x22, 0x23, 0x24, 0x25, 0x26,   // 3x
    0x27, 0x60, 0x61, 0x62, 0x64, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6F, 0x70, 0x72,   // 4x
    0x73, 0x74, 0x75, 0x76, 0x77, 0x78, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E, 0x28, 0x29, 0x2A, 0x2B, 0x2C,   // 5x
    0x2D, 0x60, 0x61, 0x62, 0x64, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6F, 0x70, 0x72,   // 6x
    0x73, 0x74, 0x75, 0x76, 0x77, 0x78, 0x7A, 0x7B, 0x7C, 0x7D, 0x7E, 0x2E, 0x2F, 0x30, 0x31, 0x10};  // 7x

// From 0x80 to 0xBF.
constexpr std::array<Code, 64> kSigns{{
    {0x10}, {0x10}, {0x18},      {0x32}, {0x13},   {0x33}, {0x34}, {0x35},     // 80
    {0x36}, {0x37}, {0x76, 0xA}, {0x18}, {0x7266}, {0x10}, {0x10}, {0x10},     // 88
    {0x10}, {0x18}, {0x18},      {0x13}, {0x13},   {0x38}, {0x1E}, {0x18},     // 90
    {0x39}, {0x3A}, {0x76, 0xA}, {0x18}, {0x7266}, {0x10}, {0x10}, {0x7D, 6},  // 98
    {0x11}, {0x3B}, {0x3C},      {0x3D}, {0x3E},   {0x3F}, {0x40}, {0x41},     // A0
    {0x42}, {0x43}, {0x44},      {0x13}, {0x45},   {0x1E}, {0x46}, {0x47},     // A8
    {0x48}, {0x49}, {0x58},      {0x59}, {0x4A},   {0x4B}, {0x4C}, {0x4D},     // B0
    {0x4E}, {0x57}, {0x4F},      {0x13}, {0x50},   {0x51}, {0x52}, {0x53},     // B8
}};

// From 0xC0 to 0xDE, and the small letters from 0xE0 to 0xFE.
constexpr std::array<Code, 31> kLetters{{
    {0x60, 3}, {0x60, 4}, {0x60, 5}, {0x60, 7}, {0x60, 6}, {0x60, 8}, {0x6066},  {0x62, 9},  // C0
    {0x66, 3}, {0x66, 4}, {0x66, 5}, {0x66, 6}, {0x6A, 3}, {0x6A, 4}, {0x6A, 5}, {0x6A, 6},
    {0x65},    {0x70, 7}, {0x72, 3}, {0x72, 4}, {0x72, 5}, {0x72, 7}, {0x72, 6}, {0x54},  // D0
    {0x81},    {0x78, 3}, {0x78, 4}, {0x78, 5}, {0x78, 6}, {0x7D, 4}, {0x7F},
}};

constexpr Code CodeOf(std::uint8_t c) {
    if (c == 0)
        return {};
    if (c < 0x20)
        return {static_cast<std::uint16_t>(c == '\t' ? 0x11 : 0x10)};
    if (c < 0x80)
        return {kAscii[c - 0x20U]};
    if (c < 0xC0)
        return kSigns[c - 0x80U];
    if (c == 0xDF)
        return {0x7676};
    if (c == 0xF7)
        return {0x55};
    if (c == 0xFF)
        return {0x7D, 6};
    return kLetters[c < 0xE0 ? c - 0xC0U : c - 0xE0U];
}

// Half bytes, the upper one first.
class NibbleWriter {
public:
    explicit NibbleWriter(IndexKey& key) : key_(key) {}

    void Add(std::uint8_t nibble) {
        if (upper_)
            key_.push_back(static_cast<std::uint8_t>(nibble << 4));
        else
            key_.back() = static_cast<std::uint8_t>(key_.back() | nibble);
        upper_ = !upper_;
    }

private:
    IndexKey& key_;
    bool upper_ = true;
};

// A zero; for each letter with an accent its weight, behind a 2 for each plain letter before it that could have had
// one; a zero. Without accents all of it is one zero byte.
void AppendAccents(std::string_view text, IndexKey& key) {
    NibbleWriter writer(key);
    writer.Add(0);
    std::size_t plain = 0;
    for (const char c : text) {
        const std::uint8_t accent = CodeOf(static_cast<std::uint8_t>(c)).accent;
        plain += kLettersWithAccents.find(c) != std::string_view::npos ? 1U : 0U;
        if (accent == 0)
            continue;
        for (; plain > 0; --plain)
            writer.Add(kPlainLetter);
        writer.Add(accent);
    }
    writer.Add(0);
}

}  // namespace

void AppendTextKeyJet3(std::string_view text, bool ascending, IndexKey& key) {
    if (!runtime::FitsCodePage1252(text))
        runtime::RaiseEngineError(runtime::ErrorNumber::kFeatureNotAvailable,
                                  "The text '" + std::string(text) + "' has a character that indexes can't order.");
    std::string bytes = runtime::ToCodePage1252(text).substr(0, kMostBytes);
    while (!bytes.empty() && bytes.back() == ' ')
        bytes.pop_back();
    const std::size_t start = key.size();
    for (const char c : bytes) {
        const std::uint16_t code = CodeOf(static_cast<std::uint8_t>(c)).in_place;
        if (code > 0xFF)
            key.push_back(static_cast<std::uint8_t>(code >> 8));
        if (code != 0)
            key.push_back(static_cast<std::uint8_t>(code));
    }
    AppendAccents(bytes, key);
    if (ascending)
        return;
    for (std::size_t i = start; i < key.size(); ++i)
        key[i] = static_cast<std::uint8_t>(~key[i]);
}

}  // namespace ledgix::jet
