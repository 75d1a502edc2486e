#include "sql_token.h"

#include <array>
#include <cmath>

#include "conversions.h"
#include "date_text.h"
#include "runtime_error.h"
#include "text.h"

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool StartsWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool ContinuesWord(char c) {
    return StartsWord(c) || IsDigit(c) || c == '$';
}

[[noreturn]] void RaiseSyntax(const std::string& what, std::string_view near) {
    runtime::RaiseEngineError(ErrorNumber::kSyntax, "Syntax error in query expression: " + what + " near '" +
                                                        std::string(near.substr(0, 40)) + "'.");
}

// A number literal as the smallest type that holds it.
runtime::Variant NumberValue(double number, bool whole) {
    if (whole && number <= 2147483647.0)
        return static_cast<std::int32_t>(number);
    return number;
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view statement) : statement_(statement) {}

    std::vector<Token> Run() {
        std::vector<Token> tokens;
        do {
            while (at_ < statement_.size() && IsBlank(statement_[at_]))
                ++at_;
            tokens.push_back(Next());
        } while (tokens.back().kind != Token::Kind::kEnd);
        return tokens;
    }

private:
    Token Next() {
        const std::size_t start = at_;
        if (at_ == statement_.size())
            return {Token::Kind::kEnd, {}, {}, start};
        const char c = statement_[at_];
        const char following = at_ + 1 < statement_.size() ? statement_[at_ + 1] : '\0';
        if (StartsWord(c))
            return {Token::Kind::kWord, TakeWord(), {}, start};
        if (IsDigit(c) || (c == '.' && IsDigit(following)))
            return {Token::Kind::kLiteral, {}, TakeNumber(), start};
        if (c == '\'' || c == '"')
            return {Token::Kind::kLiteral, {}, TakeText(c), start};
        if (c == '#')
            return {Token::Kind::kLiteral, {}, TakeDate(), start};
        if (c == '[')
            return {Token::Kind::kBracketedName, TakeBracketed(), {}, start};
        return {Token::Kind::kSymbol, TakeSymbol(), {}, start};
    }

    std::string TakeWord() {
        const std::size_t start = at_;
        while (at_ < statement_.size() && ContinuesWord(statement_[at_]))
            ++at_;
        return std::string(statement_.substr(start, at_ - start));
    }

    runtime::Variant TakeNumber() {
        const std::size_t start = at_;
        bool whole = true;
        while (at_ < statement_.size() && (IsDigit(statement_[at_]) || statement_[at_] == '.')) {
            whole = whole && statement_[at_] != '.';
            ++at_;
        }
        if (at_ < statement_.size() && (statement_[at_] == 'e' || statement_[at_] == 'E')) {
            whole = false;
            ++at_;
            if (at_ < statement_.size() && (statement_[at_] == '+' || statement_[at_] == '-'))
                ++at_;
            while (at_ < statement_.size() && IsDigit(statement_[at_]))
                ++at_;
        }
        const std::string_view text = statement_.substr(start, at_ - start);
        const std::optional<double> number = runtime::ParseNumber(text);
        if (!number || (at_ < statement_.size() && ContinuesWord(statement_[at_])))
            RaiseSyntax("a number makes no sense", statement_.substr(start));
        return NumberValue(*number, whole);
    }

    std::string TakeText(char delimiter) {
        const std::size_t start = at_++;
        std::string text;
        for (;;) {
            const std::size_t end = statement_.find(delimiter, at_);
            if (end == std::string_view::npos)
                RaiseSyntax("a text does not end", statement_.substr(start));
            text.append(statement_.substr(at_, end - at_));
            at_ = end + 1;
            if (at_ == statement_.size() || statement_[at_] != delimiter)
                return text;
            text.push_back(delimiter);
            ++at_;
        }
    }

    std::string TakeBracketed() {
        const std::size_t end = statement_.find(']', at_);
        if (end == std::string_view::npos || end == at_ + 1)
            RaiseSyntax("a bracketed name does not end", statement_.substr(at_));
        std::string name(statement_.substr(at_ + 1, end - at_ - 1));
        at_ = end + 1;
        return name;
    }

    runtime::Variant TakeDate() {
        const std::size_t end = statement_.find('#', at_ + 1);
        if (end == std::string_view::npos)
            RaiseSyntax("a date does not end", statement_.substr(at_));
        const std::string text(statement_.substr(at_ + 1, end - at_ - 1));
        const std::optional<runtime::Date> date = ParseDateText(text);
        if (!date)
            RaiseSyntax("there is no such date", statement_.substr(at_));
        at_ = end + 1;
        return *date;
    }

    std::string TakeSymbol() {
        constexpr std::array<std::string_view, 3> kPairs{"<>", "<=", ">="};
        for (const std::string_view pair : kPairs) {
            if (statement_.substr(at_, 2) == pair) {
                at_ += 2;
                return std::string(pair);
            }
        }
        constexpr std::string_view kSingles = "=<>(),.*+-/&;";
        if (kSingles.find(statement_[at_]) == std::string_view::npos)
            RaiseSyntax("a character is out of place", statement_.substr(at_));
        return std::string(1, statement_[at_++]);
    }

    std::string_view statement_;
    std::size_t at_ = 0;
};

}  // namespace

bool Token::IsWord(std::string_view word) const {
    return kind == Kind::kWord && runtime::EqualsIgnoringCase(text, word);
}

std::vector<Token> Tokenize(std::string_view statement) {
    return Tokenizer(statement).Run();
}

}  // namespace ledgix::dao
