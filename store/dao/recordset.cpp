#include "recordset.h"

#include <string>
#include <utility>

#include "runtime_error.h"

namespace ledgix::dao {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;

Recordset::Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
                     std::size_t row_count)
    : type_(type), fields_(std::move(fields)), values_(std::move(values)), row_count_(row_count) {}

void Recordset::CheckOpen() const {
    if (!open_)
        RaiseEngineError(ErrorNumber::kObjectClosed, "Object invalid or no longer set.");
}

bool Recordset::Eof() const {
    CheckOpen();
    return row_count_ == 0 || position_ > row_count_;
}

bool Recordset::Bof() const {
    CheckOpen();
    return row_count_ == 0 || position_ == 0;
}

void Recordset::MoveNext() {
    if (Eof())
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    ++position_;
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
    --position_;
}

void Recordset::MoveFirst() {
    CheckBackwards();
    if (row_count_ == 0)
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    position_ = 1;
}

void Recordset::MoveLast() {
    CheckBackwards();
    if (row_count_ == 0)
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    position_ = row_count_;
}

std::size_t Recordset::FieldPosition(std::string_view name) const {
    const Field& field = fields_[name];
    return static_cast<std::size_t>(&field - &*fields_.begin());
}

const runtime::Variant& Recordset::ValueAt(std::size_t field) const {
    if (Eof() || Bof())
        RaiseEngineError(ErrorNumber::kNoCurrentRecord, "No current record.");
    return values_[(position_ - 1) * fields_.Count() + field];
}

const runtime::Variant& Recordset::operator[](std::string_view field) const {
    CheckOpen();
    return ValueAt(FieldPosition(field));
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
    return row_count_;
}

void Recordset::Close() {
    CheckOpen();
    open_ = false;
    values_.clear();
}

}  // namespace ledgix::dao
