#include "sql_parser.h"

#include <algorithm>
#include <utility>

#include "expression_parser.h"
#include "runtime_error.h"
#include "text.h"
#include "token_reader.h"

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;

constexpr std::string_view kSelectFault = "Syntax error in the list of the SELECT statement";
constexpr std::string_view kFromFault = "Syntax error in FROM clause";
constexpr std::string_view kOrderFault = "Syntax error in ORDER BY clause";
constexpr std::string_view kInsertFault = "Syntax error in INSERT INTO statement";
constexpr std::string_view kUpdateFault = "Syntax error in UPDATE statement";
constexpr std::string_view kExpressionFault = "Syntax error (missing operator) in query expression";

class StatementParser {
public:
    explicit StatementParser(std::string_view text) : tokens_(text), expressions_(tokens_) {}

    SelectStatement Select() {
        if (!tokens_.TakeWord("select"))
            tokens_.Raise(ErrorNumber::kInvalidStatement, "Invalid SQL statement; expected 'SELECT'");
        SelectStatement select;
        if (!tokens_.TakeSymbol("*"))
            Items(select);
        Expect(tokens_.TakeWord("from"), ErrorNumber::kSelectSyntax, kSelectFault);
        From(select);
        select.where = Where();
        if (tokens_.TakeWord("order"))
            OrderBy(select);
        End(ErrorNumber::kSyntax, kExpressionFault);
        return select;
    }

    ActionStatement Action() {
        if (tokens_.TakeWord("insert"))
            return Insert();
        if (tokens_.TakeWord("update"))
            return Update();
        if (tokens_.TakeWord("delete"))
            return Delete();
        if (tokens_.Now().IsWord("select"))
            runtime::RaiseEngineError(ErrorNumber::kSelectExecuted, "Cannot execute a select query.");
        tokens_.Raise(ErrorNumber::kInvalidStatement,
                      "Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT', or 'UPDATE'");
    }

private:
    void Expect(bool found, ErrorNumber number, std::string_view what) const {
        if (!found)
            tokens_.Raise(number, what);
    }

    void End(ErrorNumber number, std::string_view what) {
        tokens_.TakeSymbol(";");
        Expect(tokens_.AtEnd(), number, what);
    }

    ExpressionPtr Where() { return tokens_.TakeWord("where") ? expressions_.Condition() : nullptr; }

    void Items(SelectStatement& select) {
        do {
            SelectItem item;
            item.expression = expressions_.Sum();
            if (tokens_.TakeWord("as"))
                item.name = tokens_.Name(ErrorNumber::kSelectSyntax, kSelectFault);
            else if (const auto* column = std::get_if<ColumnName>(&item.expression->node))
                item.name = column->name;
            else
                item.name = "Expr" + std::to_string(1000 + select.items.size());
            select.items.push_back(std::move(item));
        } while (tokens_.TakeSymbol(","));
    }

    void From(SelectStatement& select) {
        select.table = tokens_.Name(ErrorNumber::kFromSyntax, kFromFault);
        select.alias = select.table;
        if (tokens_.TakeWord("as") || tokens_.AtName())
            select.alias = tokens_.Name(ErrorNumber::kFromSyntax, kFromFault);
        if (tokens_.Now().IsSymbol(","))
            tokens_.Raise(ErrorNumber::kFeatureNotAvailable, "A query of more than one table is not available");
    }

    void OrderBy(SelectStatement& select) {
        Expect(tokens_.TakeWord("by"), ErrorNumber::kOrderBySyntax, kOrderFault);
        do {
            OrderKey key;
            key.expression = expressions_.Sum();
            key.descending = tokens_.TakeWord("desc");
            if (!key.descending)
                tokens_.TakeWord("asc");
            select.order.push_back(std::move(key));
        } while (tokens_.TakeSymbol(","));
    }

    InsertStatement Insert() {
        constexpr ErrorNumber kNumber = ErrorNumber::kInsertSyntax;
        InsertStatement insert;
        Expect(tokens_.TakeWord("into"), kNumber, kInsertFault);
        insert.table = tokens_.Name(kNumber, kInsertFault);
        if (tokens_.TakeSymbol("(")) {
            do
                insert.columns.push_back(expressions_.Column(kNumber, kInsertFault));
            while (tokens_.TakeSymbol(","));
            Expect(tokens_.TakeSymbol(")"), kNumber, kInsertFault);
        }
        Expect(tokens_.TakeWord("values") && tokens_.TakeSymbol("("), kNumber, kInsertFault);
        do
            insert.values.push_back(expressions_.Condition());
        while (tokens_.TakeSymbol(","));
        Expect(tokens_.TakeSymbol(")"), kNumber, kInsertFault);
        End(kNumber, kInsertFault);
        return insert;
    }

    UpdateStatement Update() {
        constexpr ErrorNumber kNumber = ErrorNumber::kUpdateSyntax;
        UpdateStatement update;
        update.table = tokens_.Name(kNumber, kUpdateFault);
        Expect(tokens_.TakeWord("set"), kNumber, kUpdateFault);
        do {
            SetItem item;
            item.column = expressions_.Column(kNumber, kUpdateFault);
            Expect(tokens_.TakeSymbol("="), kNumber, kUpdateFault);
            item.value = expressions_.Condition();
            update.items.push_back(std::move(item));
        } while (tokens_.TakeSymbol(","));
        update.where = Where();
        End(ErrorNumber::kSyntax, kExpressionFault);
        return update;
    }

    DeleteStatement Delete() {
        DeleteStatement removal;
        tokens_.TakeSymbol("*");
        Expect(tokens_.TakeWord("from"), ErrorNumber::kFromSyntax, kFromFault);
        removal.table = tokens_.Name(ErrorNumber::kFromSyntax, kFromFault);
        removal.where = Where();
        if (removal.where)
            End(ErrorNumber::kSyntax, kExpressionFault);
        else
            End(ErrorNumber::kFromSyntax, kFromFault);
        return removal;
    }

    TokenReader tokens_;
    ExpressionParser expressions_;
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
    return StatementParser(text).Select();
}

ActionStatement ParseAction(std::string_view text) {
    return StatementParser(text).Action();
}

}  // namespace ledgix::dao
