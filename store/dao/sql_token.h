#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "variant.h"

namespace ledgix::dao {

struct Token {
    enum class Kind { kWord, kBracketedName, kLiteral, kSymbol, kEnd };
    Kind kind = Kind::kEnd;
    std::string text;        // word, name or symbol as written, without brackets
    runtime::Variant value;  // of a literal
    std::size_t at = 0;      // where it starts in the statement

    bool IsWord(std::string_view word) const;  // in any case; bracketed names are no words
    bool IsSymbol(std::string_view symbol) const { return kind == Kind::kSymbol && text == symbol; }
};

// Splits a statement. Literals: numbers with a decimal point, 'text' and "text" with doubled delimiters inside,
// #month/day/year [hour:minute:second]#. The last token is of kind kEnd.
// Errors: 3075 for a literal or name that does not end or makes no sense.
std::vector<Token> Tokenize(std::string_view statement);

}  // namespace ledgix::dao
