#include "select_query.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "column_binder.h"
#include "field_mapping.h"
#include "matching_rows.h"
#include "row_source.h"
#include "schema_cache.h"
#include "table_definition.h"

namespace ledgix::dao {

namespace {

using runtime::Variant;

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

void AddAllColumns(SelectStatement& statement, const jet::TableDefinition& table) {
    for (const jet::Column& column : table.columns) {
        SelectItem item;
        item.name = column.name;
        item.expression = std::make_unique<Expression>(Expression{ColumnName{{}, column.name, 0}});
        statement.items.push_back(std::move(item));
    }
}

void BindAll(SelectStatement& statement, const jet::TableDefinition& table) {
    ColumnBinder binder(table, statement.table, statement.alias);
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

// The rows that fulfil the condition; values and sort keys one row behind the other.
struct Selection {
    std::vector<jet::RowId> ids;
    std::vector<Variant> values;
    std::vector<Variant> keys;
};

Variant ValueOf(const SelectItem& item, const Row& row) {
    const auto* column = std::get_if<ColumnName>(&item.expression->node);
    return column ? row.Value(column->position) : Evaluate(*item.expression, row);
}

Selection Select(jet::DatabaseFile& file, const jet::TableDefinition& table, const SelectStatement& statement) {
    Selection selection;
    VisitMatchingRows(file, table, statement.where.get(), [&](jet::RowId id, const Row& row) {
        for (const SelectItem& item : statement.items)
            selection.values.push_back(ValueOf(item, row));
        for (const OrderKey& key : statement.order)
            selection.keys.push_back(Evaluate(*key.expression, row));
        selection.ids.push_back(id);
    });
    return selection;
}

// The numbers of the rows in the order of their keys.
std::vector<std::size_t> SortedSequence(const Selection& selection, const std::vector<OrderKey>& order) {
    std::vector<std::size_t> sequence(selection.ids.size());
    std::iota(sequence.begin(), sequence.end(), std::size_t{0});
    std::stable_sort(sequence.begin(), sequence.end(), [&](std::size_t a, std::size_t b) {
        for (std::size_t k = 0; k < order.size(); ++k) {
            const int comparison =
                CompareForSort(selection.keys[a * order.size() + k], selection.keys[b * order.size() + k]);
            if (comparison != 0)
                return order[k].descending ? comparison > 0 : comparison < 0;
        }
        return false;
    });
    return sequence;
}

Selection Sorted(Selection selection, const SelectStatement& statement) {
    const std::size_t width = statement.items.size();
    Selection sorted;
    sorted.ids.reserve(selection.ids.size());
    sorted.values.reserve(selection.values.size());
    for (const std::size_t row : SortedSequence(selection, statement.order)) {
        sorted.ids.push_back(selection.ids[row]);
        for (std::size_t i = 0; i < width; ++i)
            sorted.values.push_back(std::move(selection.values[row * width + i]));
    }
    return sorted;
}

void Prepare(SelectStatement& statement, const jet::TableDefinition& table) {
    if (statement.items.empty())
        AddAllColumns(statement, table);
    BindAll(statement, table);
}

}  // namespace

void VisitSelected(jet::DatabaseFile& file, const jet::TableDefinition& table, SelectStatement statement,
                   const RowVisitor& visit) {
    Prepare(statement, table);
    const Collection<Field> fields = ResultFields(statement, table);
    const std::size_t width = statement.items.size();
    if (!statement.order.empty()) {
        const Selection sorted = Sorted(Select(file, table, statement), statement);
        for (std::size_t start = 0; start < sorted.values.size(); start += width)
            visit(fields, std::span(sorted.values).subspan(start, width));
        return;
    }
    std::vector<Variant> values(width);
    VisitMatchingRows(file, table, statement.where.get(), [&](jet::RowId, const Row& row) {
        for (std::size_t i = 0; i < width; ++i)
            values[i] = ValueOf(statement.items[i], row);
        visit(fields, values);
    });
}

std::unique_ptr<Recordset> RunSelect(SchemaCache& schema, std::shared_ptr<const jet::TableDefinition> table,
                                     SelectStatement statement, RecordsetType type, bool updatable) {
    Prepare(statement, *table);
    Selection selection = Select(schema.file(), *table, statement);
    if (!statement.order.empty())
        selection = Sorted(std::move(selection), statement);
    Collection<Field> fields = ResultFields(statement, *table);
    if (!updatable)
        return std::make_unique<Recordset>(type, std::move(fields), std::move(selection.values), selection.ids.size());
    auto source = std::make_unique<RowSource>(schema, statement.table, std::move(table), std::move(statement.items));
    return std::make_unique<Recordset>(type, std::move(fields), std::move(selection.values), std::move(selection.ids),
                                       std::move(source));
}

}  // namespace ledgix::dao
