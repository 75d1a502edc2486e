#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "dao_constants.h"
#include "row_source.h"
#include "table_def.h"
#include "variant.h"

namespace ledgix::jet {
class TableLock;
}

namespace ledgix::dao {

// The rows that a statement selected, in the state of the moment when it was opened but for what was changed through
// it, and a position among them. A recordset that is not empty starts on its first row. Changes go to the file at
// once, or into the Transaction that is open; its rolling back does not reach the rows of a recordset.
class Recordset {
public:
    // `values` holds the rows one behind the other, as many values each as there are fields. Read-only.
    Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
              std::size_t row_count);
    // One that may be edited; ids[i] is that of row i.
    Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
              std::vector<jet::RowId> ids, std::unique_ptr<RowSource> source);
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Keeps others from the table until the recordset is closed.
    void Hold(std::vector<std::unique_ptr<jet::TableLock>> locks);

    // Behind the last row, before the first row; both when there are no rows. Error 3420 when closed, as for every
    // call.
    bool Eof() const;
    bool Bof() const;

    // Deleted rows are passed over; an edit that was not written is thrown away.
    // Errors: 3021 when there is no row to move from; 3219 backwards in a forward-only recordset.
    void MoveNext();
    void MovePrevious();
    void MoveFirst();
    void MoveLast();

    // The value of the current row, or of the one that is edited. Errors: 3265 no such field, 3021 no current row,
    // 3167 it was deleted.
    const runtime::Variant& operator[](std::string_view field) const;
    const runtime::Variant& operator[](std::size_t field) const;

    const Collection<Field>& fields() const;
    RecordsetType type() const { return type_; }
    std::size_t RecordCount() const;

    // AddNew begins a row without values, which Update appends; the position stays. Edit begins to change the current
    // row. Either throws an edit away that was not written. Errors: 3251 a snapshot or forward-only recordset, 3027
    // a read-only one or a system table, 3021 and 3167 as above.
    void AddNew();
    void Edit();

    // Errors: 3020 without AddNew or Edit, 3265 no such field, 3164 a calculated field or one that counts by itself,
    // those of ConvertToColumn. What fails assigns nothing.
    void Set(std::string_view field, const runtime::Variant& value);

    // Writes what was assigned; other fields keep what they hold. Errors: 3020 without AddNew or Edit, those of
    // RowSource; the edit goes on then. After 3197 only another opening reads what the row holds now.
    void Update();
    // Error 3020 without AddNew or Edit.
    void CancelUpdate();

    // The position stays on the deleted row. Errors: as of Edit, and those of RowSource.
    void Delete();

    void Close();

private:
    struct OpenEdit {
        bool adds = false;
        RowEdit row;
    };

    void CheckOpen() const;
    void CheckBackwards() const;
    void CheckUpdatable() const;
    void CheckCurrentRow() const;
    OpenEdit& CurrentEdit();
    bool OnRow() const { return position_ >= 1 && position_ <= row_count_; }
    bool OnDeletedRow() const { return OnRow() && position_ <= deleted_.size() && deleted_[position_ - 1]; }
    void Advance();
    void GoBack();
    const runtime::Variant& ValueAt(std::size_t field) const;
    // Of the current row.
    std::span<runtime::Variant> Values();
    void AppendRow(RowSource::StoredRow row);

    RecordsetType type_;
    Collection<Field> fields_;
    std::vector<runtime::Variant> values_;
    std::size_t row_count_;  // deleted ones included
    std::size_t live_count_ = row_count_;
    // 0 before the first row, 1 on it, row_count_ + 1 behind the last.
    std::size_t position_ = 1;
    bool open_ = true;

    std::unique_ptr<RowSource> source_;  // null: may not be edited
    std::vector<jet::RowId> ids_;
    std::vector<bool> deleted_;  // shorter than the rows: the others are not
    std::optional<OpenEdit> edit_;
    std::vector<std::unique_ptr<jet::TableLock>> locks_;
};

// Takes the rows of a result one by one: the fields, the same ones each time, and the values of the row.
using RowVisitor = std::function<void(const Collection<Field>& fields, std::span<const runtime::Variant> values)>;

}  // namespace ledgix::dao
