#pragma once

#include <set>
#include <string>
#include <string_view>

#include "sql_expression.h"
#include "text.h"

namespace ledgix::jet {
struct TableDefinition;
}

namespace ledgix::dao {

// Ties the column names of a statement to the columns of its table.
class ColumnBinder {
public:
    // Names may bear the table's name or the alias in front. All must outlive the binder.
    ColumnBinder(const jet::TableDefinition& table, std::string_view name, std::string_view alias)
        : table_(table), name_(name), alias_(alias) {}

    void Bind(Expression& expression);
    // Sets the position; false when the table has no such column.
    bool Find(ColumnName& column) const;
    void Bind(ColumnName& column);

    // Error 3061 when Bind met a name that no column bears: Jet takes it for a parameter without a value.
    void CheckAllFound() const;

private:
    const jet::TableDefinition& table_;
    std::string_view name_;
    std::string_view alias_;
    std::set<std::string, runtime::LessIgnoringCase> unknown_;
};

}  // namespace ledgix::dao
