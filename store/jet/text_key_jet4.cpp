#include <array>
#include <cstddef>
#include <string>

#include "runtime_error.h"
#include "text.h"
#include "text_key.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostCharacters = 255;
constexpr std::uint8_t kEndOfText = 0x01;
constexpr std::uint8_t kEnd = 0x00;
constexpr std::uint8_t kNoAccent = 0x02;
constexpr std::uint8_t kTrailerMiddle = 0x06;

// What a character contributes: one or two bytes in its place (0: none), the weight of its accent (0: none), and a code
// in the trailer (0: none).
struct Code {
    std::uint16_t in_place = 0;
    std::uint8_t accent = 0;
    std::uint8_t trailer = 0;
};

// From U+0020 to U+007E; 0 where the trailer has the character.
constexpr std::array<std::uint16_t, 95> kAscii{
    0x07,   0x09, 0x0A, 0x0C, 0x0E, 0x10, 0x12, 0x00, 0x14, 0x16, 0x18, 0x2C,   0x1A,   0x00,   0x1C,   0x1E,    // 2x
    0x36,   0x38, 0x3A, 0x3C, 0x3E, 0x40, 0x42, 0x44, 0x46, 0x48, 0x20, 0x22,   0x2E,   0x30,   0x32,   0x24,    // 3x
    0x26,   0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59, 0x5B, 0x5C,   0x5E,   0x60,   0x62,   0x64,    // 4x
    0x66,   0x68, 0x69, 0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78, 0x27,   0x29,   0x2A,   0x2B02, 0x2B03,  // 5x
    0x2B07, 0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53, 0x55, 0x57, 0x59, 0x5B, 0x5C,   0x5E,   0x60,   0x62,   0x64,    // 6x
    0x66,   0x68, 0x69, 0x6B, 0x6D, 0x6F, 0x71, 0x73, 0x75, 0x76, 0x78, 0x2B09, 0x2B0B, 0x2B0D, 0x2B0F};         // 7x

// From U+00A0 to U+00BF.
constexpr std::array<Code, 32> kLatinSigns{{
    {0x0802}, {0x2B10}, {0x34A6},  {0x34A7}, {0x34A8}, {0x34A9},     {0x2B11}, {0x34AA},  // A0
    {0x2B12}, {0x34AB}, {0x4A, 3}, {0x3305}, {0x34AC}, {0, 0, 0x83}, {0x34AD}, {0x2B13},  // A8
    {0x34AE}, {0x3304}, {0x3A},    {0x3C},   {0x2B14}, {0x34AF},     {0x34B0}, {0x34B1},  // B0
    {0x2B15}, {0x38},   {0x64, 3}, {0x3307}, {0x3712}, {0x3716},     {0x371A}, {0x2B16},  // B8
}};

// From U+00C0 to U+00DE, and the small letters from U+00E0 to U+00FE.
constexpr std::array<Code, 31> kLatinLetters{{
    {0x4A, 0x0F}, {0x4A, 0x0E}, {0x4A, 0x12}, {0x4A, 0x19}, {0x4A, 0x13}, {0x4A, 0x1A}, {0x4A51},
    {0x4D, 0x1C},  // C0
    {0x51, 0x0F}, {0x51, 0x0E}, {0x51, 0x12}, {0x51, 0x13}, {0x59, 0x0F}, {0x59, 0x0E}, {0x59, 0x12},
    {0x59, 0x13}, {0x4F, 0x68}, {0x62, 0x19}, {0x64, 0x0F}, {0x64, 0x0E}, {0x64, 0x12}, {0x64, 0x19},
    {0x64, 0x13}, {0x3309},  // D0
    {0x64, 0x21}, {0x6F, 0x0F}, {0x6F, 0x0E}, {0x6F, 0x12}, {0x6F, 0x13}, {0x76, 0x0E}, {0x6D57},
}};

constexpr Code TrailerCode(char32_t c, char32_t first, int first_code) {
    return {0, 0, static_cast<std::uint8_t>(first_code + static_cast<int>(c - first))};
}

constexpr Code ControlCode(char32_t c) {
    if (c >= 0x09 && c <= 0x0D)
        return {static_cast<std::uint16_t>(0x0803 + (c - 0x09))};
    return c < 0x09 ? TrailerCode(c, 0x01, 0x03) : TrailerCode(c, 0x0E, 0x0B);
}

constexpr Code CodeOf(char32_t c) {
    if (c == 0)
        return {};
    if (c < 0x20)
        return ControlCode(c);
    if (c == '\'')
        return {0, 0, 0x80};
    if (c == '-')
        return {0, 0, 0x82};
    if (c < 0x7F)
        return {kAscii[c - 0x20]};
    if (c < 0xA0)
        return TrailerCode(c, 0x7F, 0x1D);
    if (c < 0xC0)
        return kLatinSigns[c - 0xA0];
    if (c == 0xDF)
        return {0x6B6B};
    if (c == 0xF7)
        return {0x330A};
    if (c == 0xFF)
        return {0x76, 0x13};
    return kLatinLetters[c < 0xE0 ? c - 0xC0 : c - 0xE0];
}

class TextKey {
public:
    explicit TextKey(IndexKey& key) : key_(key) {}

    void Add(char32_t c) {
        const Code code = CodeOf(c);
        if (code.trailer != 0)
            AddToTrailer(code.trailer);
        if (code.in_place == 0)
            return;
        if (code.in_place > 0xFF)
            key_.push_back(static_cast<std::uint8_t>(code.in_place >> 8));
        key_.push_back(static_cast<std::uint8_t>(code.in_place));
        if (code.accent != 0) {
            accents_.resize(count_, kNoAccent);
            accents_.push_back(code.accent);
        }
        ++count_;
    }

    void Finish() {
        key_.push_back(kEndOfText);
        key_.insert(key_.end(), accents_.begin(), accents_.end());
        if (!trailer_.empty()) {
            key_.insert(key_.end(), 3, kEndOfText);
            key_.insert(key_.end(), trailer_.begin(), trailer_.end());
        }
        key_.push_back(kEnd);
    }

private:
    // The place is counted in characters that have a code in place, four for each.
    void AddToTrailer(std::uint8_t code) {
        const std::size_t place = 0x8000 | (7 + 4 * count_);
        for (const std::size_t byte : {place >> 8, place & 0xFF, std::size_t{kTrailerMiddle}, std::size_t{code}})
            trailer_.push_back(static_cast<std::uint8_t>(byte));
    }

    IndexKey& key_;
    IndexKey accents_;
    IndexKey trailer_;
    std::size_t count_ = 0;  // of characters with a code in place
};

}  // namespace

void AppendTextKeyJet4(std::string_view text, bool ascending, IndexKey& key) {
    std::u16string units = runtime::ToUtf16(text).substr(0, kMostCharacters);
    while (!units.empty() && units.back() == u' ')
        units.pop_back();
    const std::size_t start = key.size();
    TextKey text_key(key);
    for (const char16_t unit : units) {
        if (unit > 0xFF)
            runtime::RaiseEngineError(runtime::ErrorNumber::kFeatureNotAvailable,
                                      "The text '" + std::string(text) + "' has a character that indexes can't order.");
        text_key.Add(unit);
    }
    text_key.Finish();
    if (ascending)
        return;
    for (std::size_t i = start; i < key.size(); ++i)
        key[i] = static_cast<std::uint8_t>(~key[i]);
    key.push_back(kEnd);
}

}  // namespace ledgix::jet
