#include "row_source.h"

#include <cmath>
#include <optional>
#include <utility>

#include "access.h"
#include "database_file.h"
#include "field_conversion.h"
#include "page_space.h"
#include "row_reader.h"
#include "runtime_error.h"
#include "schema_cache.h"
#include "table_writer.h"

namespace ledgix::dao {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;
using runtime::Variant;

namespace {

bool IsNan(const Variant& value) {
    if (const auto* number = std::get_if<double>(&value))
        return std::isnan(*number);
    if (const auto* number = std::get_if<float>(&value))
        return std::isnan(*number);
    const auto* date = std::get_if<runtime::Date>(&value);
    return date && std::isnan(date->days);
}

bool SameValue(const Variant& a, const Variant& b) {
    return a == b || (IsNan(a) && IsNan(b));
}

}  // namespace

void RaiseRecordDeleted() {
    RaiseEngineError(ErrorNumber::kRecordDeleted, "Record is deleted.");
}

// The table during one change.
class RowSource::Access : private Row {
public:
    explicit Access(RowSource& source)
        : source_(source),
          file_(source.schema_.file()),
          lock_(file_, source.table_name_, jet::TableUse::kWrite),
          transaction_(file_),
          writer_(file_, (source.LearnDefinition(), *source.current_)) {}

    jet::RowId Insert(const RowEdit& edit) {
        std::vector<Variant> values;
        values.reserve(writer_.table().columns.size());
        for (const jet::Column& column : writer_.table().columns)
            values.push_back(ConvertToColumn(runtime::Null{}, column));
        for (const jet::TableWriter::Assignment& assignment : Assignments(edit))
            values[assignment.column] = assignment.value;
        return writer_.Insert(values);
    }

    void Update(jet::RowId id, const RowEdit& edit) { writer_.Update(id, Assignments(edit)); }

    void Delete(jet::RowId id) { writer_.Delete(id); }

    // The fields of a row of the table as they are now. Error 3167 when it is gone.
    std::vector<Variant> Read(jet::RowId id) {
        reader_.emplace(file_, writer_.table());
        if (!reader_->Load(id))
            RaiseRecordDeleted();
        std::vector<Variant> values;
        values.reserve(source_.items_.size());
        for (const SelectItem& item : source_.items_)
            values.push_back(Evaluate(*item.expression, *this));
        return values;
    }

    void CheckUnchanged(jet::RowId id, std::span<const Variant> read) {
        if (!OwnsPage(id.page))
            RaiseRecordDeleted();
        const std::vector<Variant> now = Read(id);
        for (std::size_t field = 0; field < now.size(); ++field)
            if (!SameValue(now[field], read[field]))
                RaiseEngineError(ErrorNumber::kChangedByAnother,
                                 "The Microsoft Jet database engine stopped the process because you and another user "
                                 "are attempting to change the same data at the same time.");
    }

    void Commit() { transaction_.Commit(); }

private:
    Variant Value(std::size_t position) const override { return reader_->Value(source_.positions_[position]); }

    // A page whose rows are all deleted goes to other tables.
    bool OwnsPage(jet::PageNumber page) const {
        return jet::HighestInMap(file_.pager(), writer_.table().owned_map, page + 1) == page;
    }

    std::vector<jet::TableWriter::Assignment> Assignments(const RowEdit& edit) const {
        std::vector<jet::TableWriter::Assignment> assignments;
        for (std::size_t field = 0; field < edit.values.size(); ++field)
            if (edit.assigned[field]) {
                const auto& column = std::get<ColumnName>(source_.items_[field].expression->node);
                assignments.push_back({source_.positions_[column.position], edit.values[field]});
            }
        return assignments;
    }

    const RowSource& source_;
    jet::DatabaseFile& file_;
    jet::TableLock lock_;
    jet::Transaction transaction_;
    jet::TableWriter writer_;
    mutable std::optional<jet::RowReader> reader_;
};

RowSource::RowSource(SchemaCache& schema, std::string table_name, std::shared_ptr<const jet::TableDefinition> table,
                     std::vector<SelectItem> items)
    : schema_(schema), table_name_(std::move(table_name)), table_(std::move(table)), items_(std::move(items)) {}

// Columns may have been added since the recordset was opened, so they are matched by their numbers.
void RowSource::LearnDefinition() {
    std::shared_ptr<const jet::TableDefinition> now = schema_.Definition(table_->page);
    if (now == current_)
        return;
    std::vector<std::size_t> positions;
    for (const jet::Column& column : table_->columns) {
        const std::optional<std::size_t> position = now->FindColumnByNumber(column.number);
        if (!position)
            RaiseEngineError(ErrorNumber::kItemNotFound, "Item not found in this collection: " + column.name);
        positions.push_back(*position);
    }
    current_ = std::move(now);
    positions_ = std::move(positions);
}

const jet::Column* RowSource::ColumnOf(std::size_t field) const {
    const auto* column = std::get_if<ColumnName>(&items_[field].expression->node);
    return column ? &table_->columns[column->position] : nullptr;
}

std::vector<Variant> RowSource::BlankRow() const {
    std::vector<Variant> values;
    values.reserve(items_.size());
    for (std::size_t field = 0; field < items_.size(); ++field) {
        const jet::Column* column = ColumnOf(field);
        values.push_back(column ? ConvertToColumn(runtime::Null{}, *column) : Variant());
    }
    return values;
}

RowSource::StoredRow RowSource::Append(const RowEdit& edit) {
    Access access(*this);
    const jet::RowId id = access.Insert(edit);
    StoredRow row{id, access.Read(id)};
    access.Commit();
    return row;
}

std::vector<Variant> RowSource::Change(jet::RowId id, std::span<const Variant> read, const RowEdit& edit) {
    Access access(*this);
    access.CheckUnchanged(id, read);
    access.Update(id, edit);
    std::vector<Variant> values = access.Read(id);
    access.Commit();
    return values;
}

void RowSource::Remove(jet::RowId id, std::span<const Variant> read) {
    Access access(*this);
    access.CheckUnchanged(id, read);
    access.Delete(id);
    access.Commit();
}

}  // namespace ledgix::dao
