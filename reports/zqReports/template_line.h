#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ledgix::zq {

// One line of a template, divided into words and quoted texts, which are taken from left to right. Every refusal is
// error 5 and begins with "line " and the line's number.
class TemplateLine {
public:
    // Error when a quotation is not closed.
    TemplateLine(std::string_view line, int number);

    // True at once for a line without words and for a comment, which begins with "#".
    bool AtEnd() const { return next_ == tokens_.size(); }
    bool NextIsText() const { return !AtEnd() && tokens_[next_].is_text; }
    // Takes the next word if it is this one.
    bool TakeWord(std::string_view word);

    // `what` names the expected thing in the refusal.
    std::string Word(std::string_view what);
    std::string Text(std::string_view what);
    // Digits with an optional sign and decimal point, from `least` to `most`.
    double Number(std::string_view what, double least, double most);
    void End() const;

    // Like Number, for a word that was taken already.
    double NumberIn(std::string_view word, std::string_view what, double least, double most) const;

    [[noreturn]] void Fail(const std::string& reason) const;

private:
    struct Token {
        std::string text;
        bool is_text = false;
    };

    // Both cut the token off the beginning of `rest`.
    Token CutText(std::string_view& rest) const;
    static Token CutWord(std::string_view& rest);

    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int number_ = 0;
};

}  // namespace ledgix::zq
