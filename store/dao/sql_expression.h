#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "variant.h"

namespace ledgix::dao {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Literal {
    runtime::Variant value;
};

struct ColumnName {
    std::string table;  // empty when the name stands alone
    std::string name;
    std::size_t position = 0;  // in the row; set by Bind
};

enum class UnaryOperator { kMinus, kNot };
struct Unary {
    UnaryOperator op;
    ExpressionPtr operand;
};

enum class BinaryOperator {
    kEqual,
    kNotEqual,
    kLess,
    kLessOrEqual,
    kGreater,
    kGreaterOrEqual,
    kAnd,
    kOr,
    kAdd,
    kSubtract,
    kMultiply,
    kDivide,
    kConcatenate
};
struct BinaryOperation {
    BinaryOperator op;
    ExpressionPtr left;
    ExpressionPtr right;
};

struct Like {
    ExpressionPtr text;
    ExpressionPtr pattern;
};

struct Between {
    ExpressionPtr value;
    ExpressionPtr low;
    ExpressionPtr high;
};

struct In {
    ExpressionPtr value;
    std::vector<ExpressionPtr> list;
};

struct IsNullTest {
    ExpressionPtr value;
};

struct Expression {
    std::variant<Literal, ColumnName, Unary, BinaryOperation, Like, Between, In, IsNullTest> node;
};

// The row that an expression is evaluated on.
class Row {
public:
    virtual ~Row() = default;
    virtual runtime::Variant Value(std::size_t position) const = 0;
};

// Null spreads: an operator with a Null operand gives Null, but for And and Or where the other side decides.
// Errors: 3464 when the types of a comparison do not go together, 6, 11 and 13 as in any calculation.
runtime::Variant Evaluate(const Expression& expression, const Row& row);

// True when the condition holds; Null does not.
bool Holds(const Expression& condition, const Row& row);

// Below 0, 0 or above 0. Text compares without regard to case and to trailing blanks. Neither may be Null.
// Errors: 3464 when the types do not go together.
int Compare(const runtime::Variant& a, const runtime::Variant& b);

// Order of a sort: Null comes first.
int CompareForSort(const runtime::Variant& a, const runtime::Variant& b);

// Calls visit for every column name of the expression, from left to right.
void VisitColumns(Expression& expression, const std::function<void(ColumnName&)>& visit);

}  // namespace ledgix::dao
