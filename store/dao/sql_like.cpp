#include "sql_like.h"

#include <optional>
#include <string>

#include "text.h"

namespace ledgix::dao {

namespace {

struct ListMatch {
    bool matches = false;
    std::size_t behind = 0;  // position behind the closing bracket
};

// The list that opens at `at`. Empty when it does not close.
std::optional<ListMatch> MatchList(const std::u32string& pattern, std::size_t at, char32_t c) {
    std::size_t i = at + 1;
    const bool negated = i < pattern.size() && pattern[i] == U'!';
    if (negated)
        ++i;
    bool found = false;
    for (std::size_t first = i; i < pattern.size() && (pattern[i] != U']' || i == first); ++i) {
        if (i + 2 < pattern.size() && pattern[i + 1] == U'-' && pattern[i + 2] != U']') {
            found = found || (pattern[i] <= c && c <= pattern[i + 2]);
            i += 2;
        } else {
            found = found || pattern[i] == c;
        }
    }
    if (i >= pattern.size())
        return std::nullopt;
    return ListMatch{found != negated, i + 1};
}

// One element of the pattern against one character: the position behind the element, or nothing.
std::optional<std::size_t> MatchOne(const std::u32string& pattern, std::size_t at, char32_t c) {
    switch (pattern[at]) {
        case U'?':
            return at + 1;
        case U'#':
            return c >= U'0' && c <= U'9' ? std::optional(at + 1) : std::nullopt;
        case U'[': {
            const std::optional<ListMatch> list = MatchList(pattern, at, c);
            return list && list->matches ? std::optional(list->behind) : std::nullopt;
        }
        default:
            return pattern[at] == c ? std::optional(at + 1) : std::nullopt;
    }
}

}  // namespace

// Goes back to the last star only, so the time is at most the product of the lengths.
bool MatchesPattern(std::string_view text, std::string_view pattern) {
    const std::u32string t = runtime::ToUtf32(runtime::FoldCase(text));
    const std::u32string p = runtime::ToUtf32(runtime::FoldCase(pattern));
    std::size_t at = 0;
    std::size_t in_pattern = 0;
    std::optional<std::size_t> star;
    std::size_t star_took = 0;
    while (at < t.size()) {
        if (in_pattern < p.size() && p[in_pattern] == U'*') {
            star = ++in_pattern;
            star_took = at;
            continue;
        }
        const std::optional<std::size_t> next = in_pattern < p.size() ? MatchOne(p, in_pattern, t[at]) : std::nullopt;
        if (next) {
            in_pattern = *next;
            ++at;
        } else if (star) {
            in_pattern = *star;
            at = ++star_took;
        } else {
            return false;
        }
    }
    return p.find_first_not_of(U'*', in_pattern) == std::u32string::npos;
}

}  // namespace ledgix::dao
