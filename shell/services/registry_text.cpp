#include "registry_text.h"

#include <algorithm>

#include "registry_value_text.h"
#include "text.h"

namespace ledgix::services {

namespace {

constexpr std::string_view kHeader = "REGEDIT4";
constexpr std::string_view kBlanks = " \t\r";

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsHeading(std::string_view line) {
    return Trim(line).starts_with('[');
}

// The key of a heading "[key]"; empty when it is damaged. "[-key]", which says that a key goes, names none that is
// read.
std::string_view KeyOf(std::string_view heading) {
    heading = Trim(heading);
    const bool whole = heading.size() > 2 && heading.back() == ']';
    return whole ? heading.substr(1, heading.size() - 2) : std::string_view();
}

// True when a line can be what a value's bytes go on in.
bool IsMoreBytes(std::string_view line) {
    const std::string_view text = Trim(line);
    return !text.empty() && std::string_view("[\"@;").find(text.front()) == std::string_view::npos;
}

bool IsAtOrBelow(std::string_view key, std::string_view above) {
    if (key.size() > above.size() && key[above.size()] != '\\')
        return false;
    return runtime::EqualsIgnoringCase(key.substr(0, above.size()), above);
}

}  // namespace

RegistryText::RegistryText(std::string_view text) : line_end_(text.find("\r\n") == std::string_view::npos ? "" : "\r") {
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines_.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    ReadEntries();
}

void RegistryText::ReadEntries() {
    headings_.clear();
    entries_.clear();
    std::string key;
    for (std::size_t line = 0; line < lines_.size();) {
        if (!IsHeading(lines_[line])) {
            line = ReadEntry(line, key);
            continue;
        }
        key = KeyOf(lines_[line]);
        headings_.push_back({key, line});
        ++line;
    }
}

// Gives the line behind the entry, or behind `line` when there is none.
std::size_t RegistryText::ReadEntry(std::size_t line, const std::string& key) {
    const std::optional<NamedNotation> split = SplitValueLine(Trim(lines_[line]));
    if (!split || key.empty())
        return line + 1;
    std::string notation(split->notation);
    std::size_t end = line + 1;
    while (IsContinued(notation) && end < lines_.size() && IsMoreBytes(lines_[end])) {
        notation.erase(notation.rfind('\\'));
        notation += Trim(lines_[end++]);
    }
    if (const std::optional<RegistryValue> value = ParseValue(notation))
        entries_.push_back({key, split->name, *value, line, end});
    return end;
}

bool RegistryText::HasKey(std::string_view key) const {
    return std::any_of(headings_.begin(), headings_.end(),
                       [&](const Heading& heading) { return IsAtOrBelow(heading.key, key); });
}

const RegistryText::Entry* RegistryText::FindEntry(std::string_view key, std::string_view name) const {
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(), [&](const Entry& entry) {
        return runtime::EqualsIgnoringCase(entry.key, key) && runtime::EqualsIgnoringCase(entry.name, name);
    });
    return found == entries_.rend() ? nullptr : &*found;
}

std::optional<RegistryValue> RegistryText::Find(std::string_view key, std::string_view name) const {
    const Entry* entry = FindEntry(key, name);
    return entry ? std::optional(entry->value) : std::nullopt;
}

void RegistryText::AddKey(std::string_view key) {
    const auto is_this = [&](const Heading& heading) { return runtime::EqualsIgnoringCase(heading.key, key); };
    if (std::any_of(headings_.begin(), headings_.end(), is_this))
        return;
    const std::size_t end = EndOfText(lines_.size());
    std::vector<std::string> added{"", "[" + std::string(key) + "]"};
    if (end == 0)
        added.emplace(added.begin(), kHeader);
    Replace(end, end, added);
}

// Behind the last line before `end` that is not blank.
std::size_t RegistryText::EndOfText(std::size_t end) const {
    while (end > 0 && Trim(lines_[end - 1]).empty())
        --end;
    return end;
}

std::size_t RegistryText::EndOfKey(std::string_view key) const {
    std::size_t end = lines_.size();
    for (auto heading = headings_.rbegin(); heading != headings_.rend(); ++heading) {
        if (runtime::EqualsIgnoringCase(heading->key, key))
            break;
        end = heading->line;
    }
    return EndOfText(end);
}

void RegistryText::Set(std::string_view key, std::string_view name, const RegistryValue& value) {
    if (const Entry* entry = FindEntry(key, name)) {
        Replace(entry->first, entry->end, ValueLines(entry->name, value));
        return;
    }
    AddKey(key);
    const std::size_t end = EndOfKey(key);
    Replace(end, end, ValueLines(name, value));
}

void RegistryText::Replace(std::size_t first, std::size_t end, std::vector<std::string> lines) {
    for (std::string& line : lines)
        line += line_end_;
    if (end == lines_.size())
        lines.emplace_back();  // the text shall end with a line break
    const auto at = lines_.erase(Line(first), Line(end));
    lines_.insert(at, lines.begin(), lines.end());
    ReadEntries();
}

std::vector<std::string>::iterator RegistryText::Line(std::size_t number) {
    return lines_.begin() + static_cast<std::ptrdiff_t>(number);
}

std::string RegistryText::Text() const {
    std::string text;
    for (std::size_t line = 0; line < lines_.size(); ++line)
        text += (line == 0 ? "" : "\n") + lines_[line];
    return text;
}

}  // namespace ledgix::services
