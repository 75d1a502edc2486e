#include "key_lookup.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "database_file.h"
#include "index_cursor.h"
#include "table_definition.h"

namespace ledgix::dao {

namespace {

// Columns, by position, and the whole numbers that they must equal.
using KeyParts = std::map<std::size_t, std::int32_t>;

void AddEquality(const Expression& column_side, const Expression& number_side, const jet::TableDefinition& table,
                 KeyParts& parts) {
    const auto* column = std::get_if<ColumnName>(&column_side.node);
    const auto* literal = std::get_if<Literal>(&number_side.node);
    const auto* number = literal ? std::get_if<std::int32_t>(&literal->value) : nullptr;
    if (column && number && table.columns[column->position].type == jet::ColumnType::kInt32)
        parts.emplace(column->position, *number);
}

// Collects from the parts of a condition that are joined by And.
void CollectEqualities(const Expression& condition, const jet::TableDefinition& table, KeyParts& parts) {
    const auto* operation = std::get_if<BinaryOperation>(&condition.node);
    if (!operation)
        return;
    if (operation->op == BinaryOperator::kAnd) {
        CollectEqualities(*operation->left, table, parts);
        CollectEqualities(*operation->right, table, parts);
    } else if (operation->op == BinaryOperator::kEqual) {
        AddEquality(*operation->left, *operation->right, table, parts);
        AddEquality(*operation->right, *operation->left, table, parts);
    }
}

// The values of the index's first columns, as far as the condition sets them.
std::vector<runtime::Variant> LeadingValues(const jet::Index& index, const jet::TableDefinition& table,
                                            const KeyParts& parts) {
    std::vector<runtime::Variant> values;
    for (const jet::IndexColumn& column : index.columns) {
        const std::optional<std::size_t> position = table.FindColumnByNumber(column.column_number);
        const auto part = position ? parts.find(*position) : parts.end();
        if (part == parts.end())
            break;
        values.emplace_back(part->second);
    }
    return values;
}

}  // namespace

std::optional<std::vector<jet::RowId>> LookUpByKey(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                                   const Expression& condition) {
    KeyParts parts;
    CollectEqualities(condition, table, parts);
    if (parts.empty())
        return std::nullopt;
    const jet::Index* best = nullptr;
    std::vector<runtime::Variant> best_values;
    for (const jet::Index& index : table.indexes) {
        std::vector<runtime::Variant> values = LeadingValues(index, table, parts);
        if (values.size() > best_values.size()) {
            best = &index;
            best_values = std::move(values);
        }
    }
    if (!best)
        return std::nullopt;
    std::vector<jet::RowId> rows = jet::FindRows(file, table, *best, best_values);
    std::sort(rows.begin(), rows.end(), [](const jet::RowId& a, const jet::RowId& b) {
        return std::tie(a.page, a.slot) < std::tie(b.page, b.slot);
    });
    return rows;
}

}  // namespace ledgix::dao
