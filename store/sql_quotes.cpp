#include "sql_quotes.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "runtime_error.h"
#include "text.h"

namespace ledgix::store {

namespace {

constexpr char32_t kApostrophe = U'\'';
constexpr std::size_t kCharactersBefore = 3;
constexpr std::size_t kCharactersBehind = 4;

bool Opens(std::u32string_view before) {
    return before.find_first_of(U"=<>") != std::u32string_view::npos || before.find(U"ke") != std::u32string_view::npos;
}

bool Closes(std::u32string_view behind) {
    constexpr std::array<std::u32string_view, 4> kWords{U" and", U"  an", U" or ", U" ord"};
    return std::find(kWords.begin(), kWords.end(), behind) != kWords.end();
}

// True when the apostrophe at `at`, counted from 0, may stay as it is.
bool Delimits(std::u32string_view sql, std::size_t at) {
    if (at > 0 && Opens(sql.substr(at - kCharactersBefore, kCharactersBefore)))
        return true;
    const std::size_t behind = sql.size() - at - 1;
    if (behind > kCharactersBehind && Closes(sql.substr(at + 1, kCharactersBehind)))
        return true;
    return behind == 0;
}

// Doubles the apostrophes that delimit no value. False, and the rest left as it is, when one stands too near to the
// start for the characters before it to be looked at.
bool DoubleStrayApostrophes(std::u32string& sql) {
    for (std::size_t at = sql.find(kApostrophe); at != std::u32string::npos; at = sql.find(kApostrophe, at + 1)) {
        if (at > 0 && at < kCharactersBefore)
            return false;
        if (!Delimits(sql, at))
            sql.insert(++at, 1, kApostrophe);
    }
    return true;
}

}  // namespace

std::string FixSQLQuotes(std::string& sql) {
    sql = runtime::ReplaceAll(runtime::ReplaceAll(sql, "false", "0"), "true", "-1");
    if (std::count(sql.begin(), sql.end(), '\'') % 2 == 0)
        return sql;
    std::u32string text = runtime::ToUtf32(sql);
    const bool walked = DoubleStrayApostrophes(text);
    sql = runtime::ToUtf8(text);
    if (!walked)
        runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument);
    return sql;
}

}  // namespace ledgix::store
