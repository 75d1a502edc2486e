#include "template_line.h"

#include <algorithm>

#include "conversions.h"
#include "runtime_error.h"

namespace ledgix::zq {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr char kQuote = '"';
// Longer ones are no measures, and could be beyond a double.
constexpr std::size_t kLongestNumber = 12;

bool IsPlainNumber(std::string_view word) {
    if (word.starts_with('-'))
        word.remove_prefix(1);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    return word.size() <= kLongestNumber && std::any_of(word.begin(), word.end(), is_digit) &&
           std::count(word.begin(), word.end(), '.') <= 1 &&
           std::all_of(word.begin(), word.end(), [&](char c) { return is_digit(c) || c == '.'; });
}

}  // namespace

TemplateLine::TemplateLine(std::string_view line, int number) : number_(number) {
    for (;;) {
        line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
        if (line.empty() || (tokens_.empty() && line.front() == '#'))
            return;
        tokens_.push_back(line.front() == kQuote ? CutText(line) : CutWord(line));
    }
}

TemplateLine::Token TemplateLine::CutText(std::string_view& rest) const {
    Token token{"", true};
    for (std::size_t at = 1; at < rest.size(); ++at) {
        if (rest[at] != kQuote) {
            token.text.push_back(rest[at]);
            continue;
        }
        const bool doubled = at + 1 < rest.size() && rest[at + 1] == kQuote;
        if (!doubled) {
            rest.remove_prefix(at + 1);
            return token;
        }
        token.text.push_back(kQuote);
        ++at;
    }
    Fail("the quotation is not closed");
}

TemplateLine::Token TemplateLine::CutWord(std::string_view& rest) {
    const std::size_t length = std::min(rest.find_first_of(kBlanks), rest.size());
    Token token{std::string(rest.substr(0, length)), false};
    rest.remove_prefix(length);
    return token;
}

bool TemplateLine::TakeWord(std::string_view word) {
    const bool is_next = !AtEnd() && !NextIsText() && tokens_[next_].text == word;
    if (is_next)
        ++next_;
    return is_next;
}

std::string TemplateLine::Word(std::string_view what) {
    if (AtEnd() || NextIsText())
        Fail(std::string(what) + " is missing");
    return tokens_[next_++].text;
}

std::string TemplateLine::Text(std::string_view what) {
    if (!NextIsText())
        Fail(std::string(what) + " in quotation marks is missing");
    return tokens_[next_++].text;
}

double TemplateLine::Number(std::string_view what, double least, double most) {
    return NumberIn(Word(what), what, least, most);
}

double TemplateLine::NumberIn(std::string_view word, std::string_view what, double least, double most) const {
    if (!IsPlainNumber(word))
        Fail("'" + std::string(word) + "' is no number for " + std::string(what));
    const double value = runtime::LeadingNumber(word);
    if (value < least || value > most)
        Fail(std::string(what) + " must be from " + runtime::ToText(least) + " to " + runtime::ToText(most));
    return value;
}

void TemplateLine::End() const {
    if (!AtEnd())
        Fail("unknown word '" + tokens_[next_].text + "'");
}

void TemplateLine::Fail(const std::string& reason) const {
    runtime::RaiseError(runtime::ErrorNumber::kInvalidArgument, "line " + std::to_string(number_) + ": " + reason);
}

}  // namespace ledgix::zq
