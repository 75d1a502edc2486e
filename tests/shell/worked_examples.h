#pragma once

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "help_file.h"

// The worked examples of the help file, and the arithmetic in which they are written.
namespace ledgix::test {

// A row of an example.
struct Figure {
    int topic = 0;
    std::string name;
    std::string formula;  // with the names of other figures; empty when the figure is given
    std::string numbers;  // the formula with their values; empty where that says no more
    std::string value;    // "-5,420", "54.45", "1.03%"
};

inline double NumberOf(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '.' || c == '-')
            digits += c;
    return digits.empty() ? std::nan("") : std::stod(digits);
}

inline int DecimalsOf(std::string_view value) {
    const auto point = value.find('.');
    int decimals = 0;
    for (auto i = point;
         i != std::string_view::npos && ++i < value.size() && std::isdigit(static_cast<unsigned char>(value[i])) != 0;)
        ++decimals;
    return decimals;
}

inline double RoundedTo(double number, int decimals) {
    const double scale = std::pow(10.0, decimals);
    return std::nearbyint(number * scale) / scale;
}

// Works out a formula of plain figures: + - × ÷ ^, parentheses, "%" behind a number, and "tax on (...)" with 19.5 % to
// 38,000, 33 % to 60,000 and 39 % above.
class Arithmetic {
public:
    static double Value(const std::string& text) {
        Arithmetic arithmetic(text);
        const double value = arithmetic.Sum();
        if (!arithmetic.rest_.empty())
            arithmetic.Fail();
        return value;
    }

private:
    explicit Arithmetic(std::string_view text) : rest_(text) {}

    [[noreturn]] void Fail() const { throw std::invalid_argument("not understood: '" + std::string(rest_) + "'"); }

    bool Take(std::string_view token) {
        while (rest_.starts_with(' '))
            rest_.remove_prefix(1);
        if (!rest_.starts_with(token))
            return false;
        rest_.remove_prefix(token.size());
        return true;
    }

    double Sum() {
        double value = Product();
        for (;;) {
            if (Take("+"))
                value += Product();
            else if (Take("-"))
                value -= Product();
            else
                return value;
        }
    }

    double Product() {
        double value = Power();
        for (;;) {
            if (Take("×"))
                value *= Power();
            else if (Take("÷"))
                value /= Power();
            else
                return value;
        }
    }

    double Power() {
        const double value = Signed();
        return Take("^") ? std::pow(value, Signed()) : value;
    }

    double Signed() { return Take("-") ? -Operand() : Operand(); }

    double Operand() {
        if (Take("tax on"))
            return Tax(Operand());
        if (!Take("("))
            return Number();
        const double value = Sum();
        if (!Take(")"))
            Fail();
        return value;
    }

    double Number() {
        std::size_t length = 0;
        while (length < rest_.size() && (std::isdigit(static_cast<unsigned char>(rest_[length])) != 0 ||
                                         rest_[length] == ',' || rest_[length] == '.'))
            ++length;
        if (length == 0)
            Fail();
        const double number = NumberOf(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return Take("%") ? number / 100 : number;
    }

    static double Tax(double income) {
        const double amount = std::abs(income);
        double tax = 0;
        double below = 0;
        for (const auto& [bound, rate] :
             {std::pair(38000.0, 0.195), std::pair(60000.0, 0.33), std::pair(HUGE_VAL, 0.39)}) {
            if (amount > below)
                tax += std::nearbyint(rate * (std::min(amount, bound) - below));
            below = bound;
        }
        return income < 0 ? -tax : tax;
    }

    std::string_view rest_;
};

class WorkedExamples {
public:
    explicit WorkedExamples(const shell::HelpFile& file) {
        for (const shell::HelpPage& page : file.pages())
            for (const shell::HelpBlock& block : page.blocks)
                if (block.kind == shell::HelpBlock::Kind::kFigure)
                    Add(page.context, block);
    }

    const std::vector<Figure>& figures() const { return figures_; }
    bool Has(const std::string& name) const { return values_.count(name) != 0; }
    double Value(const std::string& name) const { return NumberOf(values_.at(name)); }

    // A formula with the values of all figures that it names, those below zero in parentheses.
    std::string InNumbers(const std::string& formula) const {
        std::string numbers;
        for (std::size_t at = 0; at < formula.size();) {
            const std::string name = NameAt(formula, at);
            if (name.empty()) {
                numbers += formula[at++];
                continue;
            }
            const std::string& value = values_.at(name);
            numbers += value.starts_with('-') ? "(" + value + ")" : value;
            at += name.size();
        }
        return numbers;
    }

    // What is wrong with a figure by its own formula; empty when all is right.
    std::string Trouble(const Figure& figure) const {
        const std::string numbers = InNumbers(figure.formula);
        const bool says_no_more = numbers == figure.formula || numbers == figure.value;
        if (figure.numbers != (says_no_more ? std::string() : numbers))
            return "the figures of the formula are " + numbers;
        const double value = RoundedTo(Arithmetic::Value(numbers), DecimalsOf(figure.value));
        return value == NumberOf(figure.value) ? std::string() : "the formula gives " + std::to_string(value);
    }

private:
    void Add(int topic, const shell::HelpBlock& block) {
        std::vector<std::string> steps = shell::FigureSteps(block);
        Figure figure{topic, block.name, "", "", steps.back()};
        if (steps.size() > 1)
            figure.formula = steps[0];
        if (steps.size() > 2)
            figure.numbers = steps[1];
        values_[figure.name] = figure.value;
        figures_.push_back(std::move(figure));
    }

    // The longest name that begins here as a word of its own.
    std::string NameAt(const std::string& formula, std::size_t at) const {
        const auto is_word = [&](std::size_t i) {
            return i < formula.size() && std::isalnum(static_cast<unsigned char>(formula[i])) != 0;
        };
        std::string found;
        if (at > 0 && is_word(at - 1))
            return found;
        for (const auto& [name, value] : values_)
            if (name.size() > found.size() && formula.compare(at, name.size(), name) == 0 && !is_word(at + name.size()))
                found = name;
        return found;
    }

    std::vector<Figure> figures_;
    std::map<std::string, std::string> values_;
};

}  // namespace ledgix::test
