#include "expression_parser.h"

#include <array>
#include <string_view>
#include <utility>

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;

constexpr int kDeepestNesting = 200;
constexpr int kMostOperators = 1000;  // a chain of them nests to the left

[[noreturn]] void RaiseTooComplex() {
    runtime::RaiseEngineError(ErrorNumber::kTooComplex, "Query is too complex.");
}

template <class Node>
ExpressionPtr Make(Node node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

// Counts the depth of nesting while it lives.
class Nested {
public:
    explicit Nested(int& depth) : depth_(depth) {
        if (++depth_ > kDeepestNesting)
            RaiseTooComplex();
    }
    ~Nested() { --depth_; }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

private:
    int& depth_;
};

}  // namespace

ExpressionPtr ExpressionParser::Join(BinaryOperator op, ExpressionPtr left, ExpressionPtr right) {
    if (++operators_ > kMostOperators)
        RaiseTooComplex();
    return Make(BinaryOperation{op, std::move(left), std::move(right)});
}

ExpressionPtr ExpressionParser::Condition() {
    const Nested nested(depth_);
    ExpressionPtr left = Conjunction();
    while (tokens_.TakeWord("or"))
        left = Join(BinaryOperator::kOr, std::move(left), Conjunction());
    return left;
}

ExpressionPtr ExpressionParser::Conjunction() {
    ExpressionPtr left = Negation();
    while (tokens_.TakeWord("and"))
        left = Join(BinaryOperator::kAnd, std::move(left), Negation());
    return left;
}

ExpressionPtr ExpressionParser::Negation() {
    const Nested nested(depth_);
    if (tokens_.TakeWord("not"))
        return Make(Unary{UnaryOperator::kNot, Negation()});
    return Predicate();
}

ExpressionPtr ExpressionParser::Predicate() {
    ExpressionPtr left = Sum();
    while (const std::optional<BinaryOperator> comparison = TakeComparison())
        left = Join(*comparison, std::move(left), Sum());
    if (tokens_.TakeWord("is"))
        return NullTest(std::move(left));
    const bool negated =
        tokens_.Now().IsWord("not") &&
        (tokens_.Next().IsWord("like") || tokens_.Next().IsWord("between") || tokens_.Next().IsWord("in")) &&
        tokens_.TakeWord("not");
    if (tokens_.TakeWord("like"))
        left = Make(Like{std::move(left), Sum()});
    else if (tokens_.TakeWord("between"))
        left = Range(std::move(left));
    else if (tokens_.TakeWord("in"))
        left = List(std::move(left));
    return negated ? Make(Unary{UnaryOperator::kNot, std::move(left)}) : std::move(left);
}

std::optional<BinaryOperator> ExpressionParser::TakeComparison() {
    constexpr std::array<std::pair<std::string_view, BinaryOperator>, 6> kComparisons{
        {{"=", BinaryOperator::kEqual},
         {"<>", BinaryOperator::kNotEqual},
         {"<", BinaryOperator::kLess},
         {"<=", BinaryOperator::kLessOrEqual},
         {">", BinaryOperator::kGreater},
         {">=", BinaryOperator::kGreaterOrEqual}}};
    for (const auto& [symbol, op] : kComparisons)
        if (tokens_.TakeSymbol(symbol))
            return op;
    return std::nullopt;
}

ExpressionPtr ExpressionParser::NullTest(ExpressionPtr value) {
    const bool negated = tokens_.TakeWord("not");
    if (!tokens_.TakeWord("null"))
        tokens_.Raise(ErrorNumber::kSyntax, "Syntax error in query expression: NULL expected");
    ExpressionPtr test = Make(IsNullTest{std::move(value)});
    return negated ? Make(Unary{UnaryOperator::kNot, std::move(test)}) : std::move(test);
}

ExpressionPtr ExpressionParser::Range(ExpressionPtr value) {
    ExpressionPtr low = Sum();
    if (!tokens_.TakeWord("and"))
        tokens_.Raise(ErrorNumber::kSyntax, "Syntax error in query expression: BETWEEN without AND");
    return Make(Between{std::move(value), std::move(low), Sum()});
}

ExpressionPtr ExpressionParser::List(ExpressionPtr value) {
    In in{std::move(value), {}};
    if (!tokens_.TakeSymbol("("))
        tokens_.Raise(ErrorNumber::kSyntax, "Syntax error in query expression: IN without a list");
    do
        in.list.push_back(Sum());
    while (tokens_.TakeSymbol(","));
    if (!tokens_.TakeSymbol(")"))
        tokens_.Raise(ErrorNumber::kSyntax, "Syntax error in query expression: the list of IN does not end");
    return Make(std::move(in));
}

ExpressionPtr ExpressionParser::Sum() {
    const Nested nested(depth_);
    ExpressionPtr left = Product();
    for (;;) {
        if (tokens_.TakeSymbol("+"))
            left = Join(BinaryOperator::kAdd, std::move(left), Product());
        else if (tokens_.TakeSymbol("-"))
            left = Join(BinaryOperator::kSubtract, std::move(left), Product());
        else if (tokens_.TakeSymbol("&"))
            left = Join(BinaryOperator::kConcatenate, std::move(left), Product());
        else
            return left;
    }
}

ExpressionPtr ExpressionParser::Product() {
    ExpressionPtr left = Operand();
    for (;;) {
        if (tokens_.TakeSymbol("*"))
            left = Join(BinaryOperator::kMultiply, std::move(left), Operand());
        else if (tokens_.TakeSymbol("/"))
            left = Join(BinaryOperator::kDivide, std::move(left), Operand());
        else
            return left;
    }
}

ExpressionPtr ExpressionParser::Operand() {
    const Nested nested(depth_);
    if (tokens_.TakeSymbol("-"))
        return Make(Unary{UnaryOperator::kMinus, Operand()});
    if (tokens_.TakeSymbol("+"))
        return Operand();
    if (tokens_.TakeSymbol("("))
        return Parenthesis();
    if (tokens_.Now().kind == Token::Kind::kLiteral) {
        Literal literal{tokens_.Now().value};
        tokens_.Advance();
        return Make(std::move(literal));
    }
    if (tokens_.TakeWord("true"))
        return Make(Literal{true});
    if (tokens_.TakeWord("false"))
        return Make(Literal{false});
    if (tokens_.TakeWord("null"))
        return Make(Literal{runtime::Null{}});
    return Make(Column(ErrorNumber::kSyntax, "Syntax error (missing operator) in query expression"));
}

ExpressionPtr ExpressionParser::Parenthesis() {
    ExpressionPtr inner = Condition();
    if (!tokens_.TakeSymbol(")"))
        tokens_.Raise(ErrorNumber::kSyntax, "Syntax error in query expression: a parenthesis does not close");
    return inner;
}

ColumnName ExpressionParser::Column(ErrorNumber number, std::string_view what) {
    ColumnName column;
    column.name = tokens_.Name(number, what);
    if (tokens_.TakeSymbol(".")) {
        column.table = std::exchange(column.name, {});
        column.name = tokens_.Name(number, what);
    }
    return column;
}

}  // namespace ledgix::dao
