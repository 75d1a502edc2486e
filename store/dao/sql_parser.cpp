#include "sql_parser.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "runtime_error.h"
#include "sql_token.h"
#include "text.h"

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;

constexpr int kDeepestNesting = 200;
constexpr int kMostOperators = 1000;  // a chain of them nests to the left

constexpr std::array<std::string_view, 20> kReservedWords{"select", "from", "where",  "order",   "by",     "as", "and",
                                                          "or",     "not",  "like",   "between", "in",     "is", "null",
                                                          "asc",    "desc", "insert", "update",  "delete", "set"};

[[noreturn]] void RaiseTooComplex() {
    runtime::RaiseEngineError(ErrorNumber::kTooComplex, "Query is too complex.");
}

template <class Node>
ExpressionPtr Make(Node node) {
    return std::make_unique<Expression>(Expression{std::move(node)});
}

class Parser {
public:
    explicit Parser(std::string_view text) : tokens_(Tokenize(text)) {}

    SelectStatement Select() {
        SelectStatement select;
        if (!TakeWord("select"))
            Raise(ErrorNumber::kInvalidStatement, "Invalid SQL statement; expected 'SELECT'");
        if (!TakeSymbol("*"))
            Items(select);
        if (!TakeWord("from"))
            Raise(ErrorNumber::kSelectSyntax, "Syntax error in the list of the SELECT statement");
        From(select);
        if (TakeWord("where"))
            select.where = Condition();
        if (TakeWord("order"))
            OrderBy(select);
        TakeSymbol(";");
        if (Now().kind != Token::Kind::kEnd)
            Raise(ErrorNumber::kSyntax, "Syntax error (missing operator) in query expression");
        return select;
    }

private:
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

    const Token& Now() const { return tokens_[at_]; }
    const Token& Next() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
    void Advance() { at_ = std::min(at_ + 1, tokens_.size() - 1); }

    bool TakeWord(std::string_view word) {
        const bool found = Now().IsWord(word);
        if (found)
            Advance();
        return found;
    }

    bool TakeSymbol(std::string_view symbol) {
        const bool found = Now().IsSymbol(symbol);
        if (found)
            Advance();
        return found;
    }

    [[noreturn]] void Raise(ErrorNumber number, const std::string& what) const {
        const bool at_end = Now().kind == Token::Kind::kEnd;
        runtime::RaiseEngineError(number, what + (at_end ? " at the end of the statement."
                                                         : " at position " + std::to_string(Now().at + 1) + "."));
    }

    bool AtName() const {
        if (Now().kind == Token::Kind::kBracketedName)
            return true;
        if (Now().kind != Token::Kind::kWord)
            return false;
        for (const std::string_view word : kReservedWords)
            if (Now().IsWord(word))
                return false;
        return true;
    }

    std::string Name(ErrorNumber number, const std::string& what) {
        if (!AtName())
            Raise(number, what);
        std::string name = Now().text;
        Advance();
        return name;
    }

    void Items(SelectStatement& select) {
        do {
            SelectItem item;
            item.expression = Sum();
            if (TakeWord("as"))
                item.name = Name(ErrorNumber::kSelectSyntax, "Syntax error in the list of the SELECT statement");
            else if (const auto* column = std::get_if<ColumnName>(&item.expression->node))
                item.name = column->name;
            else
                item.name = "Expr" + std::to_string(1000 + select.items.size());
            select.items.push_back(std::move(item));
        } while (TakeSymbol(","));
    }

    void From(SelectStatement& select) {
        constexpr auto kWhat = "Syntax error in FROM clause";
        select.table = Name(ErrorNumber::kFromSyntax, kWhat);
        select.alias = select.table;
        if (TakeWord("as") || AtName())
            select.alias = Name(ErrorNumber::kFromSyntax, kWhat);
        if (Now().IsSymbol(","))
            Raise(ErrorNumber::kFeatureNotAvailable, "A query of more than one table is not available");
    }

    void OrderBy(SelectStatement& select) {
        if (!TakeWord("by"))
            Raise(ErrorNumber::kOrderBySyntax, "Syntax error in ORDER BY clause");
        do {
            OrderKey key;
            key.expression = Sum();
            key.descending = TakeWord("desc");
            if (!key.descending)
                TakeWord("asc");
            select.order.push_back(std::move(key));
        } while (TakeSymbol(","));
    }

    ExpressionPtr Join(BinaryOperator op, ExpressionPtr left, ExpressionPtr right) {
        if (++operators_ > kMostOperators)
            RaiseTooComplex();
        return Make(BinaryOperation{op, std::move(left), std::move(right)});
    }

    ExpressionPtr Condition() {
        const Nested nested(depth_);
        ExpressionPtr left = Conjunction();
        while (TakeWord("or"))
            left = Join(BinaryOperator::kOr, std::move(left), Conjunction());
        return left;
    }

    ExpressionPtr Conjunction() {
        ExpressionPtr left = Negation();
        while (TakeWord("and"))
            left = Join(BinaryOperator::kAnd, std::move(left), Negation());
        return left;
    }

    ExpressionPtr Negation() {
        const Nested nested(depth_);
        if (TakeWord("not"))
            return Make(Unary{UnaryOperator::kNot, Negation()});
        return Predicate();
    }

    ExpressionPtr Predicate() {
        ExpressionPtr left = Sum();
        while (const std::optional<BinaryOperator> comparison = TakeComparison())
            left = Join(*comparison, std::move(left), Sum());
        if (TakeWord("is"))
            return NullTest(std::move(left));
        const bool negated = Now().IsWord("not") &&
                             (Next().IsWord("like") || Next().IsWord("between") || Next().IsWord("in")) &&
                             TakeWord("not");
        if (TakeWord("like"))
            left = Make(Like{std::move(left), Sum()});
        else if (TakeWord("between"))
            left = Range(std::move(left));
        else if (TakeWord("in"))
            left = List(std::move(left));
        return negated ? Make(Unary{UnaryOperator::kNot, std::move(left)}) : std::move(left);
    }

    std::optional<BinaryOperator> TakeComparison() {
        constexpr std::array<std::pair<std::string_view, BinaryOperator>, 6> kComparisons{
            {{"=", BinaryOperator::kEqual},
             {"<>", BinaryOperator::kNotEqual},
             {"<", BinaryOperator::kLess},
             {"<=", BinaryOperator::kLessOrEqual},
             {">", BinaryOperator::kGreater},
             {">=", BinaryOperator::kGreaterOrEqual}}};
        for (const auto& [symbol, op] : kComparisons)
            if (TakeSymbol(symbol))
                return op;
        return std::nullopt;
    }

    ExpressionPtr NullTest(ExpressionPtr value) {
        const bool negated = TakeWord("not");
        if (!TakeWord("null"))
            Raise(ErrorNumber::kSyntax, "Syntax error in query expression: NULL expected");
        ExpressionPtr test = Make(IsNullTest{std::move(value)});
        return negated ? Make(Unary{UnaryOperator::kNot, std::move(test)}) : std::move(test);
    }

    ExpressionPtr Range(ExpressionPtr value) {
        ExpressionPtr low = Sum();
        if (!TakeWord("and"))
            Raise(ErrorNumber::kSyntax, "Syntax error in query expression: BETWEEN without AND");
        return Make(Between{std::move(value), std::move(low), Sum()});
    }

    ExpressionPtr List(ExpressionPtr value) {
        In in{std::move(value), {}};
        if (!TakeSymbol("("))
            Raise(ErrorNumber::kSyntax, "Syntax error in query expression: IN without a list");
        do
            in.list.push_back(Sum());
        while (TakeSymbol(","));
        if (!TakeSymbol(")"))
            Raise(ErrorNumber::kSyntax, "Syntax error in query expression: the list of IN does not end");
        return Make(std::move(in));
    }

    ExpressionPtr Sum() {
        const Nested nested(depth_);
        ExpressionPtr left = Product();
        for (;;) {
            if (TakeSymbol("+"))
                left = Join(BinaryOperator::kAdd, std::move(left), Product());
            else if (TakeSymbol("-"))
                left = Join(BinaryOperator::kSubtract, std::move(left), Product());
            else if (TakeSymbol("&"))
                left = Join(BinaryOperator::kConcatenate, std::move(left), Product());
            else
                return left;
        }
    }

    ExpressionPtr Product() {
        ExpressionPtr left = Operand();
        for (;;) {
            if (TakeSymbol("*"))
                left = Join(BinaryOperator::kMultiply, std::move(left), Operand());
            else if (TakeSymbol("/"))
                left = Join(BinaryOperator::kDivide, std::move(left), Operand());
            else
                return left;
        }
    }

    ExpressionPtr Operand() {
        const Nested nested(depth_);
        if (TakeSymbol("-"))
            return Make(Unary{UnaryOperator::kMinus, Operand()});
        if (TakeSymbol("+"))
            return Operand();
        if (TakeSymbol("(")) {
            ExpressionPtr inner = Condition();
            if (!TakeSymbol(")"))
                Raise(ErrorNumber::kSyntax, "Syntax error in query expression: a parenthesis does not close");
            return inner;
        }
        if (Now().kind == Token::Kind::kLiteral) {
            Literal literal{Now().value};
            Advance();
            return Make(std::move(literal));
        }
        if (TakeWord("true"))
            return Make(Literal{true});
        if (TakeWord("false"))
            return Make(Literal{false});
        if (TakeWord("null"))
            return Make(Literal{runtime::Null{}});
        return Column();
    }

    ExpressionPtr Column() {
        constexpr auto kWhat = "Syntax error (missing operator) in query expression";
        ColumnName column;
        column.name = Name(ErrorNumber::kSyntax, kWhat);
        if (TakeSymbol(".")) {
            column.table = std::exchange(column.name, {});
            column.name = Name(ErrorNumber::kSyntax, kWhat);
        }
        return Make(std::move(column));
    }

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int depth_ = 0;
    int operators_ = 0;
};

}  // namespace

bool IsSelect(std::string_view text) {
    constexpr std::string_view kSelect = "select";
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (text.size() <= kSelect.size() || !runtime::EqualsIgnoringCase(text.substr(0, kSelect.size()), kSelect))
        return false;
    return std::string_view(" \t\r\n*[").find(text[kSelect.size()]) != std::string_view::npos;
}

SelectStatement ParseSelect(std::string_view text) {
    return Parser(text).Select();
}

}  // namespace ledgix::dao
