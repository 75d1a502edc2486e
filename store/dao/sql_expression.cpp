#include "sql_expression.h"

#include <cmath>
#include <limits>
#include <optional>

#include "conversions.h"
#include "rounding.h"
#include "runtime_error.h"
#include "sql_like.h"
#include "text.h"

namespace ledgix::dao {

namespace {

using runtime::IsNull;
using runtime::Null;
using runtime::Variant;

[[noreturn]] void RaiseTypeMismatch() {
    runtime::RaiseEngineError(runtime::ErrorNumber::kCriteriaMismatch, "Data type mismatch in criteria expression.");
}

bool IsText(const Variant& value) {
    return std::holds_alternative<std::string>(value);
}

bool IsOpaque(const Variant& value) {
    return std::holds_alternative<runtime::Binary>(value) || std::holds_alternative<runtime::Guid>(value);
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// A total order: numbers, then what is no number.
int CompareNumbers(double a, double b) {
    if (std::isnan(a) || std::isnan(b))
        return (std::isnan(a) ? 1 : 0) - (std::isnan(b) ? 1 : 0);
    return a < b ? -1 : a > b ? 1 : 0;
}

// A truth value: true, false, or nothing for Null.
std::optional<bool> Truth(const Variant& value) {
    if (IsNull(value))
        return std::nullopt;
    if (IsText(value) || IsOpaque(value))
        RaiseTypeMismatch();
    return runtime::ToDouble(value) != 0.0;
}

Variant FromTruth(std::optional<bool> truth) {
    return truth ? Variant(*truth) : Variant(Null{});
}

Variant Arithmetic(BinaryOperator op, const Variant& left, const Variant& right) {
    const double a = runtime::ToDouble(left);
    const double b = runtime::ToDouble(right);
    switch (op) {
        case BinaryOperator::kAdd:
            return runtime::CheckOverflow(a + b);
        case BinaryOperator::kSubtract:
            return runtime::CheckOverflow(a - b);
        case BinaryOperator::kMultiply:
            return runtime::CheckOverflow(a * b);
        default:
            return runtime::Divide(a, b);
    }
}

bool ComparisonHolds(BinaryOperator op, int order) {
    switch (op) {
        case BinaryOperator::kEqual:
            return order == 0;
        case BinaryOperator::kNotEqual:
            return order != 0;
        case BinaryOperator::kLess:
            return order < 0;
        case BinaryOperator::kLessOrEqual:
            return order <= 0;
        case BinaryOperator::kGreater:
            return order > 0;
        default:
            return order >= 0;
    }
}

std::string TextOrEmpty(const Variant& value) {
    return IsNull(value) ? std::string() : runtime::ToText(value);
}

class Evaluator {
public:
    explicit Evaluator(const Row& row) : row_(row) {}

    Variant operator()(const Literal& literal) const { return literal.value; }

    Variant operator()(const ColumnName& column) const { return row_.Value(column.position); }

    Variant operator()(const Unary& unary) const {
        const Variant value = Evaluate(*unary.operand, row_);
        if (unary.op == UnaryOperator::kNot) {
            const std::optional<bool> truth = Truth(value);
            return FromTruth(truth ? std::optional<bool>(!*truth) : std::nullopt);
        }
        if (IsNull(value))
            return Null{};
        const auto* whole = std::get_if<std::int32_t>(&value);
        if (whole && *whole != std::numeric_limits<std::int32_t>::min())
            return -*whole;
        return -runtime::ToDouble(value);
    }

    Variant operator()(const BinaryOperation& operation) const {
        if (operation.op == BinaryOperator::kAnd || operation.op == BinaryOperator::kOr)
            return Logic(operation);
        const Variant left = Evaluate(*operation.left, row_);
        const Variant right = Evaluate(*operation.right, row_);
        if (operation.op == BinaryOperator::kConcatenate) {
            if (IsNull(left) && IsNull(right))
                return Null{};
            return TextOrEmpty(left) + TextOrEmpty(right);
        }
        if (IsNull(left) || IsNull(right))
            return Null{};
        if (operation.op >= BinaryOperator::kAdd)
            return Arithmetic(operation.op, left, right);
        return ComparisonHolds(operation.op, Compare(left, right));
    }

    Variant operator()(const Like& like) const {
        const Variant text = Evaluate(*like.text, row_);
        const Variant pattern = Evaluate(*like.pattern, row_);
        if (IsNull(text) || IsNull(pattern))
            return Null{};
        return MatchesPattern(runtime::ToText(text), runtime::ToText(pattern));
    }

    Variant operator()(const Between& between) const {
        const Variant value = Evaluate(*between.value, row_);
        const Variant low = Evaluate(*between.low, row_);
        const Variant high = Evaluate(*between.high, row_);
        if (IsNull(value) || IsNull(low) || IsNull(high))
            return Null{};
        const bool upwards = Compare(value, low) >= 0 && Compare(value, high) <= 0;
        const bool downwards = Compare(value, high) >= 0 && Compare(value, low) <= 0;
        return upwards || downwards;
    }

    Variant operator()(const In& in) const {
        const Variant value = Evaluate(*in.value, row_);
        if (IsNull(value))
            return Null{};
        bool null_seen = false;
        for (const ExpressionPtr& item : in.list) {
            const Variant candidate = Evaluate(*item, row_);
            if (IsNull(candidate))
                null_seen = true;
            else if (Compare(value, candidate) == 0)
                return true;
        }
        return null_seen ? Variant(Null{}) : Variant(false);
    }

    Variant operator()(const IsNullTest& test) const { return IsNull(Evaluate(*test.value, row_)); }

private:
    // The side that decides does so even when the other is Null.
    Variant Logic(const BinaryOperation& operation) const {
        const bool deciding = operation.op == BinaryOperator::kOr;
        const std::optional<bool> left = Truth(Evaluate(*operation.left, row_));
        if (left == deciding)
            return deciding;
        const std::optional<bool> right = Truth(Evaluate(*operation.right, row_));
        if (right == deciding)
            return deciding;
        return left && right ? Variant(!deciding) : Variant(Null{});
    }

    const Row& row_;
};

class ColumnVisitor {
public:
    explicit ColumnVisitor(const std::function<void(ColumnName&)>& visit) : visit_(visit) {}

    void operator()(Literal&) const {}
    void operator()(ColumnName& column) const { visit_(column); }
    void operator()(Unary& unary) const { Into(unary.operand); }
    void operator()(BinaryOperation& operation) const {
        Into(operation.left);
        Into(operation.right);
    }
    void operator()(Like& like) const {
        Into(like.text);
        Into(like.pattern);
    }
    void operator()(Between& between) const {
        Into(between.value);
        Into(between.low);
        Into(between.high);
    }
    void operator()(In& in) const {
        Into(in.value);
        for (ExpressionPtr& item : in.list)
            Into(item);
    }
    void operator()(IsNullTest& test) const { Into(test.value); }

private:
    void Into(ExpressionPtr& expression) const { VisitColumns(*expression, visit_); }

    const std::function<void(ColumnName&)>& visit_;
};

}  // namespace

Variant Evaluate(const Expression& expression, const Row& row) {
    return std::visit(Evaluator(row), expression.node);
}

bool Holds(const Expression& condition, const Row& row) {
    return Truth(Evaluate(condition, row)).value_or(false);
}

int Compare(const Variant& a, const Variant& b) {
    if (IsText(a) && IsText(b))
        return runtime::CompareIgnoringCase(WithoutTrailingBlanks(std::get<std::string>(a)),
                                            WithoutTrailingBlanks(std::get<std::string>(b)));
    if (IsOpaque(a) && a.index() == b.index()) {
        if (const auto* bytes = std::get_if<runtime::Binary>(&a))
            return *bytes < std::get<runtime::Binary>(b) ? -1 : *bytes == std::get<runtime::Binary>(b) ? 0 : 1;
        const auto& left = std::get<runtime::Guid>(a).bytes;
        const auto& right = std::get<runtime::Guid>(b).bytes;
        return left < right ? -1 : left == right ? 0 : 1;
    }
    if (IsText(a) || IsText(b) || IsOpaque(a) || IsOpaque(b))
        RaiseTypeMismatch();
    return CompareNumbers(runtime::ToDouble(a), runtime::ToDouble(b));
}

int CompareForSort(const Variant& a, const Variant& b) {
    if (IsNull(a) || IsNull(b))
        return (IsNull(b) ? 1 : 0) - (IsNull(a) ? 1 : 0);
    return Compare(a, b);
}

void VisitColumns(Expression& expression, const std::function<void(ColumnName&)>& visit) {
    std::visit(ColumnVisitor(visit), expression.node);
}

}  // namespace ledgix::dao
