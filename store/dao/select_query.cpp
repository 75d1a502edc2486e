#include "select_query.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "database_file.h"
#include "key_lookup.h"
#include "row_reader.h"
#include "runtime_error.h"
#include "table_scan.h"
#include "text.h"

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;
using runtime::Variant;

Field FieldOf(const jet::Column& column) {
    Field field;
    field.name = column.name;
    field.type = static_cast<FieldType>(column.type);
    field.size = column.type == jet::ColumnType::kText ? static_cast<int>(column.Characters()) : column.length;
    field.attributes = column.fixed ? kFixedField : kVariableField;
    if (column.autonumber)
        field.attributes |= kAutoIncrementField;
    return field;
}

// The type of a calculated field, as far as the expression itself tells.
FieldType TypeOf(const Expression& expression) {
    if (const auto* literal = std::get_if<Literal>(&expression.node)) {
        if (std::holds_alternative<runtime::Date>(literal->value))
            return kDate;
        if (std::holds_alternative<std::int32_t>(literal->value))
            return kLong;
        return std::holds_alternative<double>(literal->value) ? kDouble : kText;
    }
    if (const auto* operation = std::get_if<BinaryOperation>(&expression.node)) {
        if (operation->op == BinaryOperator::kConcatenate)
            return kText;
        return operation->op >= BinaryOperator::kAdd ? kDouble : kBoolean;
    }
    const auto* unary = std::get_if<Unary>(&expression.node);
    return unary && unary->op == UnaryOperator::kMinus ? kDouble : kBoolean;
}

// The current row of a scan or of a reader of single rows.
template <class Reader>
class ReaderRow : public Row {
public:
    explicit ReaderRow(Reader& reader) : reader_(reader) {}
    Variant Value(std::size_t position) const override { return reader_.Value(position); }

private:
    Reader& reader_;
};

// Ties the column names of a statement to the columns of its table.
class Binder {
public:
    Binder(const jet::TableDefinition& table, const SelectStatement& statement)
        : table_(table), statement_(statement) {}

    void Bind(Expression& expression) {
        VisitColumns(expression, [this](ColumnName& column) { BindColumn(column); });
    }

    // Jet takes a name that it does not know for a parameter without a value.
    void CheckAllFound() const {
        if (unknown_.empty())
            return;
        std::string names;
        for (const std::string& name : unknown_)
            names += (names.empty() ? "" : ", ") + name;
        runtime::RaiseEngineError(
            ErrorNumber::kTooFewParameters,
            "Too few parameters. Expected " + std::to_string(unknown_.size()) + ". No column is named " + names + ".");
    }

private:
    void BindColumn(ColumnName& column) {
        const bool this_table = column.table.empty() || runtime::EqualsIgnoringCase(column.table, statement_.alias) ||
                                runtime::EqualsIgnoringCase(column.table, statement_.table);
        const std::optional<std::size_t> position =
            this_table ? table_.FindColumn(column.name) : std::optional<std::size_t>();
        if (position)
            column.position = *position;
        else
            unknown_.insert(column.table.empty() ? column.name : column.table + "." + column.name);
    }

    const jet::TableDefinition& table_;
    const SelectStatement& statement_;
    std::set<std::string, runtime::LessIgnoringCase> unknown_;
};

void AddAllColumns(SelectStatement& statement, const jet::TableDefinition& table) {
    for (const jet::Column& column : table.columns) {
        SelectItem item;
        item.name = column.name;
        item.expression = std::make_unique<Expression>(Expression{ColumnName{{}, column.name, 0}});
        statement.items.push_back(std::move(item));
    }
}

void BindAll(SelectStatement& statement, const jet::TableDefinition& table) {
    Binder binder(table, statement);
    for (SelectItem& item : statement.items)
        binder.Bind(*item.expression);
    if (statement.where)
        binder.Bind(*statement.where);
    for (OrderKey& key : statement.order)
        binder.Bind(*key.expression);
    binder.CheckAllFound();
}

Collection<Field> ResultFields(const SelectStatement& statement, const jet::TableDefinition& table) {
    std::vector<Field> fields;
    for (const SelectItem& item : statement.items) {
        const auto* column = std::get_if<ColumnName>(&item.expression->node);
        Field field;
        if (column)
            field = FieldOf(table.columns[column->position]);
        else
            field.type = TypeOf(*item.expression);
        field.name = item.name;
        fields.push_back(std::move(field));
    }
    return Collection<Field>(std::move(fields));
}

// Rows one behind the other, `width` values each.
struct RowList {
    std::vector<Variant> values;
    std::size_t width = 0;
    std::size_t count = 0;
};

// The rows that fulfil the condition, and their sort keys.
struct Selection {
    RowList rows;
    RowList keys;
};

void AddIfHolds(const SelectStatement& statement, const Row& row, Selection& selection) {
    if (statement.where && !Holds(*statement.where, row))
        return;
    for (const SelectItem& item : statement.items)
        selection.rows.values.push_back(Evaluate(*item.expression, row));
    for (const OrderKey& key : statement.order)
        selection.keys.values.push_back(Evaluate(*key.expression, row));
    ++selection.rows.count;
}

Selection Select(jet::DatabaseFile& file, const jet::TableDefinition& table, const SelectStatement& statement) {
    Selection selection{{{}, statement.items.size(), 0}, {{}, statement.order.size(), 0}};
    const auto found = statement.where ? LookUpByKey(file, table, *statement.where) : std::nullopt;
    if (found) {
        jet::RowReader reader(file, table);
        const ReaderRow row(reader);
        for (const jet::RowId& id : *found)
            if (reader.Load(id))
                AddIfHolds(statement, row, selection);
        return selection;
    }
    jet::TableScan scan(file, table);
    for (const ReaderRow row(scan); scan.Next();)
        AddIfHolds(statement, row, selection);
    return selection;
}

RowList Sorted(RowList rows, const RowList& keys, const std::vector<OrderKey>& order) {
    std::vector<std::size_t> sequence(rows.count);
    std::iota(sequence.begin(), sequence.end(), std::size_t{0});
    std::stable_sort(sequence.begin(), sequence.end(), [&](std::size_t a, std::size_t b) {
        for (std::size_t k = 0; k < order.size(); ++k) {
            const int comparison = CompareForSort(keys.values[a * keys.width + k], keys.values[b * keys.width + k]);
            if (comparison != 0)
                return order[k].descending ? comparison > 0 : comparison < 0;
        }
        return false;
    });
    RowList sorted{{}, rows.width, rows.count};
    sorted.values.reserve(rows.values.size());
    for (const std::size_t row : sequence)
        for (std::size_t i = 0; i < rows.width; ++i)
            sorted.values.push_back(std::move(rows.values[row * rows.width + i]));
    return sorted;
}

}  // namespace

Collection<Field> FieldsOf(const jet::TableDefinition& table) {
    std::vector<Field> fields;
    for (const jet::Column& column : table.columns)
        fields.push_back(FieldOf(column));
    return Collection<Field>(std::move(fields));
}

std::unique_ptr<Recordset> RunSelect(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                     SelectStatement statement, RecordsetType type) {
    if (statement.items.empty())
        AddAllColumns(statement, table);
    BindAll(statement, table);
    auto [rows, keys] = Select(file, table, statement);
    if (!statement.order.empty())
        rows = Sorted(std::move(rows), keys, statement.order);
    return std::make_unique<Recordset>(type, ResultFields(statement, table), std::move(rows.values), rows.count);
}

}  // namespace ledgix::dao
