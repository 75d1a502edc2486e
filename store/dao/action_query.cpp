#include "action_query.h"

#include <numeric>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "column_binder.h"
#include "field_conversion.h"
#include "matching_rows.h"
#include "runtime_error.h"
#include "table_definition.h"
#include "table_writer.h"

namespace ledgix::dao {

namespace {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;
using runtime::Variant;

// Where there is no row, there are no columns.
class NoRow : public Row {
public:
    Variant Value(std::size_t) const override { return runtime::Null{}; }
};

// Refuses a column that is named a second time.
class Destinations {
public:
    void Add(const ColumnName& column) {
        if (!positions_.insert(column.position).second)
            RaiseEngineError(ErrorNumber::kDuplicateDestination, "Duplicate output destination '" + column.name + "'.");
    }

private:
    std::set<std::size_t> positions_;
};

class ActionRunner {
public:
    ActionRunner(jet::DatabaseFile& file, const jet::TableDefinition& table) : file_(file), table_(table) {}

    std::size_t operator()(InsertStatement& insert) const {
        const std::vector<std::size_t> destinations = InsertColumns(insert);
        if (destinations.size() != insert.values.size())
            RaiseEngineError(ErrorNumber::kValueCountDiffers,
                             "Number of query values and destination fields are not the same.");
        const jet::TableDefinition no_columns;
        ColumnBinder binder(no_columns, {}, {});
        for (const ExpressionPtr& value : insert.values)
            binder.Bind(*value);
        binder.CheckAllFound();
        std::vector<Variant> row;
        for (const jet::Column& column : table_.columns)
            row.push_back(ConvertToColumn(runtime::Null{}, column));
        for (std::size_t i = 0; i < destinations.size(); ++i)
            row[destinations[i]] =
                ConvertToColumn(Evaluate(*insert.values[i], NoRow()), table_.columns[destinations[i]]);
        jet::TableWriter(file_, table_).Insert(row);
        return 1;
    }

    std::size_t operator()(UpdateStatement& update) const {
        BindUpdate(update);
        struct Change {
            jet::RowId id;
            std::vector<jet::TableWriter::Assignment> assignments;
        };
        std::vector<Change> changes;
        VisitMatchingRows(file_, table_, update.where.get(), [&](jet::RowId id, const Row& row) {
            Change change{id, {}};
            for (const SetItem& item : update.items)
                change.assignments.push_back(
                    {item.column.position,
                     ConvertToColumn(Evaluate(*item.value, row), table_.columns[item.column.position])});
            changes.push_back(std::move(change));
        });
        jet::TableWriter writer(file_, table_);
        for (const Change& change : changes)
            writer.Update(change.id, change.assignments);
        return changes.size();
    }

    std::size_t operator()(DeleteStatement& removal) const {
        if (removal.where) {
            ColumnBinder binder(table_, removal.table, removal.table);
            binder.Bind(*removal.where);
            binder.CheckAllFound();
        }
        std::vector<jet::RowId> ids;
        VisitMatchingRows(file_, table_, removal.where.get(), [&](jet::RowId id, const Row&) { ids.push_back(id); });
        jet::TableWriter writer(file_, table_);
        for (const jet::RowId& id : ids)
            writer.Delete(id);
        return ids.size();
    }

private:
    // The positions that the values of an insert go to.
    std::vector<std::size_t> InsertColumns(InsertStatement& insert) const {
        std::vector<std::size_t> positions(insert.columns.empty() ? table_.columns.size() : insert.columns.size());
        std::iota(positions.begin(), positions.end(), std::size_t{0});
        const ColumnBinder binder(table_, insert.table, insert.table);
        Destinations destinations;
        for (std::size_t i = 0; i < insert.columns.size(); ++i) {
            ColumnName& column = insert.columns[i];
            if (!binder.Find(column))
                RaiseEngineError(ErrorNumber::kUnknownInsertField,
                                 "The INSERT INTO statement contains the following unknown field name: '" +
                                     column.name +
                                     "'. Make sure you have typed the name correctly, and try the operation again.");
            destinations.Add(column);
            positions[i] = column.position;
        }
        return positions;
    }

    void BindUpdate(UpdateStatement& update) const {
        ColumnBinder binder(table_, update.table, update.table);
        for (SetItem& item : update.items) {
            binder.Bind(item.column);
            binder.Bind(*item.value);
        }
        if (update.where)
            binder.Bind(*update.where);
        binder.CheckAllFound();
        Destinations destinations;
        for (const SetItem& item : update.items) {
            destinations.Add(item.column);
            if (table_.columns[item.column.position].autonumber)
                RaiseEngineError(ErrorNumber::kFieldNotUpdatable, "Field cannot be updated.");
        }
    }

    jet::DatabaseFile& file_;
    const jet::TableDefinition& table_;
};

}  // namespace

std::size_t RunAction(jet::DatabaseFile& file, const jet::TableDefinition& table, ActionStatement statement) {
    return std::visit(ActionRunner(file, table), statement);
}

}  // namespace ledgix::dao
