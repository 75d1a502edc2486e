#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "runtime_error.h"
#include "sql_token.h"

namespace ledgix::dao {

// The tokens of a statement and a place among them; behind the last one it stays at the end.
class TokenReader {
public:
    // Errors of Tokenize.
    explicit TokenReader(std::string_view statement) : tokens_(Tokenize(statement)) {}

    const Token& Now() const { return tokens_[at_]; }
    const Token& Next() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
    void Advance() { at_ = std::min(at_ + 1, tokens_.size() - 1); }
    bool AtEnd() const { return Now().kind == Token::Kind::kEnd; }

    // True, and one token further, when it is this one.
    bool TakeWord(std::string_view word);
    bool TakeSymbol(std::string_view symbol);

    // Whether the token may stand for a table or a column: bracketed, or a word that is not reserved.
    bool AtName() const;
    std::string Name(runtime::ErrorNumber number, std::string_view what);

    // Raises the error, telling the position.
    [[noreturn]] void Raise(runtime::ErrorNumber number, std::string_view what) const;

private:
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
};

}  // namespace ledgix::dao
