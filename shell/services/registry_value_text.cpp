#include "registry_value_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "raw_registry.h"
#include "text.h"

namespace ledgix::services {

namespace {

constexpr std::size_t kNumberSize = 4;
constexpr std::size_t kLongestLine = 77;  // before the backslash
constexpr std::string_view kContinued = "\\";
constexpr std::string_view kIndent = "  ";

bool StartsWith(std::string_view text, std::string_view lower_case) {
    return runtime::EqualsIgnoringCase(text.substr(0, lower_case.size()), lower_case);
}

std::string_view TrimRight(std::string_view text) {
    const std::size_t last = text.find_last_not_of(" \t");
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

// A whole text of up to `most` hexadecimal digits.
std::optional<std::uint32_t> ParseHex(std::string_view digits, std::size_t most) {
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    if (digits.empty() || digits.size() > most || std::from_chars(digits.data(), end, number, 16).ptr != end)
        return std::nullopt;
    return number;
}

// Takes a quoted text off the front of `text`.
std::optional<std::string> TakeQuoted(std::string_view& text) {
    if (text.empty() || text.front() != '"')
        return std::nullopt;
    std::string content;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '"') {
            text.remove_prefix(at + 1);
            return content;
        }
        if (text[at] == '\\' && ++at == text.size())
            break;
        content.push_back(text[at]);
    }
    return std::nullopt;
}

std::string Quoted(std::string_view text) {
    return "\"" + runtime::ReplaceAll(runtime::ReplaceAll(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

std::optional<RegistryValue> ParseNumber(std::string_view digits) {
    const std::optional<std::uint32_t> number = ParseHex(digits, 2 * kNumberSize);
    if (!number)
        return std::nullopt;
    RegistryValue value{kRegistryNumber, {}};
    for (std::size_t i = 0; i < kNumberSize; ++i)
        value.bytes.push_back(static_cast<char>(*number >> (8 * i)));
    return value;
}

// "0a,ff" with blanks anywhere between.
std::optional<std::string> ParseBytes(std::string_view list) {
    std::string packed;
    std::copy_if(list.begin(), list.end(), std::back_inserter(packed), [](char c) { return c != ' ' && c != '\t'; });
    std::string bytes;
    std::string_view rest = packed;
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        const std::optional<std::uint32_t> byte = ParseHex(rest.substr(0, comma), 2);
        const bool dangling = comma != std::string_view::npos && comma + 1 == rest.size();
        if (!byte || dangling)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*byte));
        rest.remove_prefix(std::min(comma, rest.size() - 1) + 1);
        if (comma == std::string_view::npos)
            break;
    }
    return bytes;
}

// What follows "hex": an optional type in parentheses, a colon, the bytes.
std::optional<RegistryValue> ParseTyped(std::string_view notation) {
    RegistryValue value{kRegistryBinary, {}};
    const std::size_t colon = notation.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    if (colon > 0) {
        if (notation.front() != '(' || notation[colon - 1] != ')' || colon < 2)
            return std::nullopt;
        const std::optional<std::uint32_t> type = ParseHex(notation.substr(1, colon - 2), 8);
        if (!type)
            return std::nullopt;
        value.type = *type;
    }
    const std::optional<std::string> bytes = ParseBytes(notation.substr(colon + 1));
    if (!bytes)
        return std::nullopt;
    value.bytes = *bytes;
    return value;
}

bool IsControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

// A text that stands on one line and comes back as the same bytes.
bool IsPlainText(const RegistryValue& value) {
    if (value.type != kRegistryText || value.bytes.empty() || value.bytes.back() != '\0')
        return false;
    const std::u32string text = runtime::ToUtf32(runtime::CodePage1252ToUtf8(value.bytes));
    return std::none_of(text.begin(), text.end() - 1, IsControl);
}

std::string HexOf(std::uint32_t number, std::size_t width) {
    std::array<char, 8> digits{};
    const std::string text(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

std::vector<std::string> ByteLines(std::string line, const RegistryValue& value) {
    line += value.type == kRegistryBinary ? "hex:" : "hex(" + HexOf(value.type, 1) + "):";
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        const bool last = i + 1 == value.bytes.size();
        line += HexOf(static_cast<unsigned char>(value.bytes[i]), 2) + (last ? "" : ",");
        if (!last && line.size() + 3 > kLongestLine) {
            lines.push_back(line + std::string(kContinued));
            line = kIndent;
        }
    }
    lines.push_back(line);
    return lines;
}

std::uint32_t NumberOf(const std::string& bytes) {
    std::uint32_t number = 0;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        number = number << 8 | static_cast<unsigned char>(*byte);
    return number;
}

}  // namespace

std::optional<NamedNotation> SplitValueLine(std::string_view line) {
    NamedNotation split;
    if (!line.empty() && line.front() == '@') {
        line.remove_prefix(1);
    } else {
        const std::optional<std::string> name = TakeQuoted(line);
        if (!name)
            return std::nullopt;
        split.name = *name;
    }
    if (line.empty() || line.front() != '=')
        return std::nullopt;
    split.notation = TrimRight(line.substr(1));
    return split;
}

bool IsContinued(std::string_view notation) {
    return StartsWith(notation, "hex") && TrimRight(notation).ends_with(kContinued);
}

std::optional<RegistryValue> ParseValue(std::string_view notation) {
    if (StartsWith(notation, "dword:"))
        return ParseNumber(notation.substr(6));
    if (StartsWith(notation, "hex"))
        return ParseTyped(notation.substr(3));
    const std::optional<std::string> text = TakeQuoted(notation);
    if (!text || !notation.empty())
        return std::nullopt;
    return RegistryValue{kRegistryText, runtime::ToCodePage1252(*text) + '\0'};
}

std::vector<std::string> ValueLines(std::string_view name, const RegistryValue& value) {
    const std::string start = (name.empty() ? "@" : Quoted(name)) + "=";
    if (IsPlainText(value)) {
        const std::string text = value.bytes.substr(0, value.bytes.size() - 1);
        return {start + Quoted(runtime::CodePage1252ToUtf8(text))};
    }
    if (value.type == kRegistryNumber && value.bytes.size() == kNumberSize)
        return {start + "dword:" + HexOf(NumberOf(value.bytes), 2 * kNumberSize)};
    return ByteLines(start, value);
}

}  // namespace ledgix::services
