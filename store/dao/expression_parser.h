#pragma once

#include <optional>
#include <string_view>

#include "sql_expression.h"
#include "token_reader.h"

namespace ledgix::dao {

// Reads expressions off the tokens of one statement. Errors: 3075 what is no expression, 3360 when the statement's
// expressions nest too deeply or are too many.
class ExpressionParser {
public:
    // The reader must outlive the parser.
    explicit ExpressionParser(TokenReader& tokens) : tokens_(tokens) {}

    // With comparisons, And, Or and Not.
    ExpressionPtr Condition();
    // Without them.
    ExpressionPtr Sum();
    // A name, with its table in front or without. Its errors are the caller's.
    ColumnName Column(runtime::ErrorNumber number, std::string_view what);

private:
    ExpressionPtr Join(BinaryOperator op, ExpressionPtr left, ExpressionPtr right);
    ExpressionPtr Conjunction();
    ExpressionPtr Negation();
    ExpressionPtr Predicate();
    std::optional<BinaryOperator> TakeComparison();
    ExpressionPtr NullTest(ExpressionPtr value);
    ExpressionPtr Range(ExpressionPtr value);
    ExpressionPtr List(ExpressionPtr value);
    ExpressionPtr Product();
    ExpressionPtr Operand();
    ExpressionPtr Parenthesis();

    TokenReader& tokens_;
    int depth_ = 0;
    int operators_ = 0;
};

}  // namespace ledgix::dao
