#include "entry_check.h"

#include <algorithm>

#include "damage_error.h"

namespace ledgix::jet {

namespace {

constexpr std::uint8_t kNullAscending = 0x00;
constexpr std::uint8_t kNullDescending = 0xFF;

bool IsNullValue(const std::optional<runtime::Variant>& value) {
    return value && runtime::IsNull(*value);
}

}  // namespace

EntryCheck::EntryCheck(CheckRun& run, CheckedRows& rows, const RawIndex& raw)
    : run_(run), rows_(rows), raw_(raw), has_entry_(rows.size()) {
    const TableDefinition& table = rows.table();
    index_.columns = raw.columns;
    for (const IndexColumn& column : raw.columns) {
        const std::optional<std::size_t> position = table.FindColumnByNumber(column.column_number);
        columns_.push_back(position ? &table.columns[*position] : nullptr);
        name_ += (name_.empty() ? "" : ", ") + (position ? columns_.back()->name : "?");
    }
    name_ = "the index (" + name_ + ") of the table in page " + std::to_string(table.page);
}

void EntryCheck::Visit(Bytes key, RowId row) {
    if (!previous_ || !std::equal(key.begin(), key.end(), previous_->begin(), previous_->end()))
        ++distinct_;
    else
        CheckUnique(key, row);
    previous_.emplace(key.begin(), key.end());
    const std::optional<std::size_t> found = rows_.Find(row);
    if (!found) {
        Add("I16", row, "it has an entry, and there is no such row");
        return;
    }
    if (has_entry_[*found]) {
        Add("I19", row, "it has more than one entry");
        return;
    }
    has_entry_[*found] = true;
    if (rows_[*found].readable)
        CheckKey(*found, key);
}

void EntryCheck::CheckUnique(Bytes key, RowId row) {
    if ((raw_.flags & kIndexUnique) != 0 && !IsNullKey(key))
        Add("I20", row, "another row has the same key");
}

bool EntryCheck::IsNullKey(Bytes key) const {
    if (key.size() != raw_.columns.size())
        return false;
    for (std::size_t i = 0; i < key.size(); ++i) {
        if (key[i] != (raw_.columns[i].ascending ? kNullAscending : kNullDescending))
            return false;
    }
    return true;
}

void EntryCheck::CheckKey(std::size_t row, Bytes key) {
    const RowId home = rows_[row].home;
    const Values values = ReadValues(row);
    if ((raw_.flags & kIndexRequired) != 0 && std::any_of(values.begin(), values.end(), IsNullValue))
        Add("I17", home, "it has a null in its key");
    if ((raw_.flags & kIndexIgnoresNulls) != 0 && std::all_of(values.begin(), values.end(), IsNullValue))
        Add("I15", home, "it has an entry, and its key is null");
    const std::optional<IndexKey> expected = MakeKey(values);
    if (expected && !std::equal(key.begin(), key.end(), expected->begin(), expected->end()))
        Add("I18", home, "its entry has another key than its values");
}

EntryCheck::Values EntryCheck::ReadValues(std::size_t row) {
    rows_.Open(row);
    Values values;
    for (const Column* column : columns_)
        values.push_back(column == nullptr ? std::nullopt : rows_.Value(*column));
    return values;
}

// None when a value is not at hand, or its order is not known.
std::optional<IndexKey> EntryCheck::MakeKey(const Values& values) const {
    std::vector<runtime::Variant> key_values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!values[i])
            return std::nullopt;
        const bool is_text = std::holds_alternative<std::string>(*values[i]);
        if (is_text && columns_[i]->sort_order != kSortOrder)
            return std::nullopt;
        key_values.push_back(*values[i]);
    }
    try {
        return MakeIndexKey(run_.format, index_, key_values);
    } catch (const runtime::RuntimeError& error) {
        if (!error.Is(runtime::ErrorNumber::kFeatureNotAvailable))
            throw;
        return std::nullopt;
    }
}

void EntryCheck::Finish() {
    const bool ignores_nulls = (raw_.flags & kIndexIgnoresNulls) != 0;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (has_entry_[row] || (ignores_nulls && !rows_[row].readable))
            continue;
        if (ignores_nulls) {
            const Values values = ReadValues(row);
            if (std::all_of(values.begin(), values.end(), IsNullValue))
                continue;
        }
        Add("I14", rows_[row].home, "it has no entry");
    }
    if (raw_.distinct_keys < distinct_)
        run_.findings.AddIfStrict("I21", name_ + ": it has " + std::to_string(distinct_) +
                                             " different keys, and it says " + std::to_string(raw_.distinct_keys));
}

void EntryCheck::Add(std::string_view code, RowId row, const std::string& text) {
    run_.findings.Add(code, Describe(row) + ", in " + name_ + ": " + text);
}

}  // namespace ledgix::jet
