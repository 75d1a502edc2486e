#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ledgix::services {

// A value's type and its raw bytes; texts are in code page 1252.
struct RegistryValue {
    std::uint32_t type = 0;
    std::string bytes;
    bool operator==(const RegistryValue&) const = default;
};

// A registry in its export syntax, in UTF-8:
//
//     REGEDIT4
//
//     [HKEY_LOCAL_MACHINE\SOFTWARE\Vantreo\Settings]
//     "Networkable"="1"                a text; \" and \\ stand for the quote and the backslash; its bytes end in NUL
//     "Networkable"=dword:00000105     a 32-bit number
//     "Networkable"=hex:0a,ff          binary data
//     "Networkable"=hex(2):61,00       the bytes of a value of any type; its number is hexadecimal
//
// A line of hexadecimal bytes that ends in a backslash goes on in the next one. Key and value names compare without
// regard to case. The last of several entries of one name holds. Lines that are none of this are passed over, and a
// change leaves every line as it is but those of the value that it sets.
class RegistryText {
public:
    explicit RegistryText(std::string_view text);

    // True when the key, or one below it, has a heading.
    bool HasKey(std::string_view key) const;
    std::optional<RegistryValue> Find(std::string_view key, std::string_view name) const;

    void AddKey(std::string_view key);
    // Sets a value of a key that is there, or is made.
    void Set(std::string_view key, std::string_view name, const RegistryValue& value);

    std::string Text() const;

private:
    // Lines from `first` up to `end` that hold a value.
    struct Entry {
        std::string key;
        std::string name;
        RegistryValue value;
        std::size_t first = 0;
        std::size_t end = 0;
    };
    struct Heading {
        std::string key;
        std::size_t line = 0;
    };

    void ReadEntries();
    std::size_t ReadEntry(std::size_t line, const std::string& key);
    const Entry* FindEntry(std::string_view key, std::string_view name) const;
    std::size_t EndOfText(std::size_t end) const;
    std::size_t EndOfKey(std::string_view key) const;
    void Replace(std::size_t first, std::size_t end, std::vector<std::string> lines);
    std::vector<std::string>::iterator Line(std::size_t number);

    std::string line_end_;            // what stands before the line feed
    std::vector<std::string> lines_;  // what stands between the line feeds
    std::vector<Heading> headings_;
    std::vector<Entry> entries_;
};

}  // namespace ledgix::services
