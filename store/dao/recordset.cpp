#include "recordset.h"

#include <string>
#include <utility>

#include "access.h"
#include "field_conversion.h"
#include "runtime_error.h"

namespace ledgix::dao {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;

Recordset::Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
                     std::size_t row_count)
    : type_(type), fields_(std::move(fields)), values_(std::move(values)), row_count_(row_count) {}

Recordset::Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
                     std::vector<jet::RowId> ids, std::unique_ptr<RowSource> source)
    : type_(type),
      fields_(std::move(fields)),
      values_(std::move(values)),
      row_count_(ids.size()),
      source_(std::move(source)),
      ids_(std::move(ids)) {}

Recordset::~Recordset() = default;

void Recordset::Hold(std::vector<std::unique_ptr<jet::TableLock>> locks) {
    locks_ = std::move(locks);
}

void Recordset::CheckOpen() const {
    if (!open_)
        RaiseEngineError(ErrorNumber::kObjectClosed, "Object invalid or no longer set.");
}

bool Recordset::Eof() const {
    CheckOpen();
    return position_ > row_count_ || (live_count_ == 0 && !OnRow());
}

bool Recordset::Bof() const {
    CheckOpen();
    return position_ == 0 || (live_count_ == 0 && !OnRow());
}

void Recordset::Advance() {
    do
        ++position_;
    while (OnDeletedRow());
}

void Recordset::GoBack() {
    do
        --position_;
    while (OnDeletedRow());
}

void Recordset::MoveNext() {
    if (Eof())
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    edit_.reset();
    Advance();
}

void Recordset::CheckBackwards() const {
    CheckOpen();
    if (type_ == kOpenForwardOnly)
        RaiseEngineError(ErrorNumber::kInvalidOperationForType, "A forward-only recordset moves forwards only.");
}

void Recordset::MovePrevious() {
    CheckBackwards();
    if (Bof())
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    edit_.reset();
    GoBack();
}

void Recordset::MoveFirst() {
    CheckBackwards();
    if (live_count_ == 0)
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    edit_.reset();
    position_ = 0;
    Advance();
}

void Recordset::MoveLast() {
    CheckBackwards();
    if (live_count_ == 0)
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    edit_.reset();
    position_ = row_count_ + 1;
    GoBack();
}

void Recordset::CheckCurrentRow() const {
    if (!OnRow())
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    if (OnDeletedRow())
        RaiseRecordDeleted();
}

const runtime::Variant& Recordset::ValueAt(std::size_t field) const {
    if (edit_)
        return edit_->row.values[field];
    CheckCurrentRow();
    return values_[(position_ - 1) * fields_.Count() + field];
}

const runtime::Variant& Recordset::operator[](std::string_view field) const {
    CheckOpen();
    return ValueAt(fields_.PositionOf(field));
}

const runtime::Variant& Recordset::operator[](std::size_t field) const {
    CheckOpen();
    static_cast<void>(fields_[field]);
    return ValueAt(field);
}

const Collection<Field>& Recordset::fields() const {
    CheckOpen();
    return fields_;
}

std::size_t Recordset::RecordCount() const {
    CheckOpen();
    return live_count_;
}

void Recordset::CheckUpdatable() const {
    CheckOpen();
    if (type_ == kOpenSnapshot || type_ == kOpenForwardOnly)
        RaiseEngineError(ErrorNumber::kFeatureNotAvailable, "Operation is not supported for this type of object.");
    if (!source_)
        RaiseEngineError(ErrorNumber::kDatabaseReadOnly, "Cannot update. Database or object is read-only.");
}

std::span<runtime::Variant> Recordset::Values() {
    return std::span(values_).subspan((position_ - 1) * fields_.Count(), fields_.Count());
}

void Recordset::AddNew() {
    CheckUpdatable();
    edit_ = OpenEdit{true, {source_->BlankRow(), std::vector<bool>(fields_.Count())}};
}

void Recordset::Edit() {
    CheckUpdatable();
    CheckCurrentRow();
    const std::span<runtime::Variant> values = Values();
    edit_ = OpenEdit{false, {{values.begin(), values.end()}, std::vector<bool>(fields_.Count())}};
}

Recordset::OpenEdit& Recordset::CurrentEdit() {
    CheckOpen();
    if (!edit_)
        RaiseEngineError(ErrorNumber::kNotEditing, "Update or CancelUpdate without AddNew or Edit.");
    return *edit_;
}

void Recordset::Set(std::string_view field, const runtime::Variant& value) {
    OpenEdit& edit = CurrentEdit();
    const std::size_t position = fields_.PositionOf(field);
    const jet::Column* column = source_->ColumnOf(position);
    if (!column || (column->autonumber && !edit.adds))
        RaiseEngineError(ErrorNumber::kFieldNotUpdatable, "Field cannot be updated.");
    edit.row.values[position] = ConvertToColumn(value, *column);
    edit.row.assigned[position] = true;
}

void Recordset::Update() {
    const OpenEdit& edit = CurrentEdit();
    if (edit.adds) {
        AppendRow(source_->Append(edit.row));
    } else {
        const std::span<runtime::Variant> values = Values();
        std::vector<runtime::Variant> written = source_->Change(ids_[position_ - 1], values, edit.row);
        std::move(written.begin(), written.end(), values.begin());
    }
    edit_.reset();
}

void Recordset::AppendRow(RowSource::StoredRow row) {
    const bool at_end = position_ > row_count_;
    std::move(row.values.begin(), row.values.end(), std::back_inserter(values_));
    ids_.push_back(row.id);
    ++row_count_;
    ++live_count_;
    position_ += at_end ? 1 : 0;
}

void Recordset::CancelUpdate() {
    CurrentEdit();
    edit_.reset();
}

void Recordset::Delete() {
    CheckUpdatable();
    CheckCurrentRow();
    source_->Remove(ids_[position_ - 1], Values());
    edit_.reset();
    deleted_.resize(row_count_);
    deleted_[position_ - 1] = true;
    --live_count_;
}

void Recordset::Close() {
    CheckOpen();
    open_ = false;
    edit_.reset();
    values_.clear();
    locks_.clear();
}

}  // namespace ledgix::dao
