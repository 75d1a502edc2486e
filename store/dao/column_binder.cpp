#include "column_binder.h"

#include <optional>

#include "runtime_error.h"
#include "table_definition.h"

namespace ledgix::dao {

void ColumnBinder::Bind(Expression& expression) {
    VisitColumns(expression, [this](ColumnName& column) { Bind(column); });
}

bool ColumnBinder::Find(ColumnName& column) const {
    if (!column.table.empty() && !runtime::EqualsIgnoringCase(column.table, alias_) &&
        !runtime::EqualsIgnoringCase(column.table, name_))
        return false;
    const std::optional<std::size_t> position = table_.FindColumn(column.name);
    column.position = position.value_or(0);
    return position.has_value();
}

void ColumnBinder::Bind(ColumnName& column) {
    if (!Find(column))
        unknown_.insert(column.table.empty() ? column.name : column.table + "." + column.name);
}

void ColumnBinder::CheckAllFound() const {
    if (unknown_.empty())
        return;
    std::string names;
    for (const std::string& name : unknown_)
        names += (names.empty() ? "" : ", ") + name;
    runtime::RaiseEngineError(
        runtime::ErrorNumber::kTooFewParameters,
        "Too few parameters. Expected " + std::to_string(unknown_.size()) + ". No column is named " + names + ".");
}

}  // namespace ledgix::dao
