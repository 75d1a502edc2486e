#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check_run.h"
#include "checked_rows.h"
#include "index_key.h"
#include "raw_definition.h"

namespace ledgix::jet {

// Compares the entries of one index with the rows of its table.
class EntryCheck {
public:
    // All must outlive it.
    EntryCheck(CheckRun& run, CheckedRows& rows, const RawIndex& raw);

    // Takes the next entry.
    void Visit(Bytes key, RowId row);

    // To be called behind the last one: looks for rows without entries.
    void Finish();

private:
    using Values = std::vector<std::optional<runtime::Variant>>;

    void CheckKey(std::size_t row, Bytes key);
    void CheckUnique(Bytes key, RowId row);
    bool IsNullKey(Bytes key) const;
    Values ReadValues(std::size_t row);
    std::optional<IndexKey> MakeKey(const Values& values) const;
    void Add(std::string_view code, RowId row, const std::string& text);

    CheckRun& run_;
    CheckedRows& rows_;
    const RawIndex& raw_;
    std::string name_;
    Index index_;
    std::vector<const Column*> columns_;  // null where the table has none
    std::vector<bool> has_entry_;         // of the rows
    std::optional<IndexKey> previous_;
    std::size_t distinct_ = 0;
};

}  // namespace ledgix::jet
