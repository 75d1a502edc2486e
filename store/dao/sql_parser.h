#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "sql_expression.h"

namespace ledgix::dao {

struct SelectItem {
    ExpressionPtr expression;
    std::string name;  // of the field in the result
};

struct OrderKey {
    ExpressionPtr expression;
    bool descending = false;
};

struct SelectStatement {
    std::vector<SelectItem> items;  // empty: all columns
    std::string table;
    std::string alias;    // the table's name where none is given
    ExpressionPtr where;  // empty: every row
    std::vector<OrderKey> order;
};

struct InsertStatement {
    std::string table;
    std::vector<ColumnName> columns;  // empty: all columns
    std::vector<ExpressionPtr> values;
};

struct SetItem {
    ColumnName column;
    ExpressionPtr value;
};

struct UpdateStatement {
    std::string table;
    std::vector<SetItem> items;
    ExpressionPtr where;  // empty: every row
};

struct DeleteStatement {
    std::string table;
    ExpressionPtr where;  // empty: every row
};

using ActionStatement = std::variant<InsertStatement, UpdateStatement, DeleteStatement>;

// True when the text is a select statement, as opposed to a table's name.
bool IsSelect(std::string_view text);

// select * | expression [as name], ... from table [as alias] [where condition] [order by expression [asc | desc],
// ...][;] Errors: 3129 no select statement, 3141 list, 3131 from clause, 3138 order by clause, 3075 expressions, 3360
// nested too deeply.
SelectStatement ParseSelect(std::string_view text);

// insert into table [(column, ...)] values (expression, ...)[;]
// update table set column = expression, ... [where condition][;]
// delete [*] from table [where condition][;]
// Errors: 3129 none of these, 3065 a select statement, 3134 insert, 3144 update, 3131 the from clause of delete, 3075
// expressions, 3360 nested too deeply.
ActionStatement ParseAction(std::string_view text);

}  // namespace ledgix::dao
