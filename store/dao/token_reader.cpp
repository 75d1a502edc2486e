#include "token_reader.h"

#include <array>

namespace ledgix::dao {

namespace {

constexpr std::array<std::string_view, 22> kReservedWords{
    "select", "from", "where", "order", "by",   "as",     "and",    "or",     "not", "like", "between",
    "in",     "is",   "null",  "asc",   "desc", "insert", "update", "delete", "set", "into", "values"};

}  // namespace

bool TokenReader::TakeWord(std::string_view word) {
    const bool found = Now().IsWord(word);
    if (found)
        Advance();
    return found;
}

bool TokenReader::TakeSymbol(std::string_view symbol) {
    const bool found = Now().IsSymbol(symbol);
    if (found)
        Advance();
    return found;
}

bool TokenReader::AtName() const {
    if (Now().kind == Token::Kind::kBracketedName)
        return true;
    if (Now().kind != Token::Kind::kWord)
        return false;
    return std::none_of(kReservedWords.begin(), kReservedWords.end(),
                        [this](std::string_view word) { return Now().IsWord(word); });
}

std::string TokenReader::Name(runtime::ErrorNumber number, std::string_view what) {
    if (!AtName())
        Raise(number, what);
    std::string name = Now().text;
    Advance();
    return name;
}

void TokenReader::Raise(runtime::ErrorNumber number, std::string_view what) const {
    const std::string place =
        AtEnd() ? " at the end of the statement." : " at position " + std::to_string(Now().at + 1) + ".";
    runtime::RaiseEngineError(number, std::string(what) + place);
}

}  // namespace ledgix::dao
