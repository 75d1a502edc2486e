#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "dao_constants.h"
#include "table_def.h"
#include "variant.h"

namespace ledgix::dao {

// The rows that a statement selected, in the state of the moment when it was opened, and a position among them.
// A recordset that is not empty starts on its first row.
class Recordset {
public:
    // `values` holds the rows one behind the other, as many values each as there are fields.
    Recordset(RecordsetType type, Collection<Field> fields, std::vector<runtime::Variant> values,
              std::size_t row_count);

    // Behind the last row, before the first row; both when there are no rows. Error 3420 when closed, as for every
    // call.
    bool Eof() const;
    bool Bof() const;

    // Errors: 3021 when there is no row to move from; 3219 backwards in a forward-only recordset.
    void MoveNext();
    void MovePrevious();
    void MoveFirst();
    void MoveLast();

    // The value of the current row. Errors: 3265 no such field, 3021 no current row.
    const runtime::Variant& operator[](std::string_view field) const;
    const runtime::Variant& operator[](std::size_t field) const;

    const Collection<Field>& fields() const;
    RecordsetType type() const { return type_; }
    std::size_t RecordCount() const;

    void Close();

private:
    void CheckOpen() const;
    void CheckBackwards() const;
    const runtime::Variant& ValueAt(std::size_t field) const;
    std::size_t FieldPosition(std::string_view name) const;

    RecordsetType type_;
    Collection<Field> fields_;
    std::vector<runtime::Variant> values_;
    std::size_t row_count_;
    // 0 before the first row, 1 on it, row_count_ + 1 behind the last.
    std::size_t position_ = 1;
    bool open_ = true;
};

}  // namespace ledgix::dao
