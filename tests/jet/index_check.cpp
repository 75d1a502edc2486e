#include "index_check.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "index_cursor.h"
#include "runtime_error.h"
#include "table_scan.h"

namespace ledgix::test {

namespace {

// Key, page and slot: what an entry says, and how entries are ordered.
struct Entry {
    jet::IndexKey key;
    jet::RowId row;

    bool operator==(const Entry&) const = default;
    bool operator<(const Entry& other) const {
        return key != other.key ? key < other.key
                                : std::pair(row.page, row.slot) < std::pair(other.row.page, other.row.slot);
    }
};

std::string Describe(const Entry& entry) {
    std::ostringstream out;
    out << std::hex << std::uppercase;
    for (const int byte : entry.key)
        out << (byte < 16 ? "0" : "") << byte << ' ';
    out << std::dec << "-> " << entry.row.page << '.' << int{entry.row.slot};
    return out.str();
}

std::vector<Entry> ExpectedEntries(jet::DatabaseFile& file, const jet::TableDefinition& table,
                                   const jet::Index& index) {
    std::vector<Entry> entries;
    jet::TableScan scan(file, table);
    while (scan.Next()) {
        std::vector<runtime::Variant> values;
        for (const jet::IndexColumn& column : index.columns)
            values.push_back(scan.Value(table.FindColumnByNumber(column.column_number).value()));
        if (index.ignore_nulls && std::all_of(values.begin(), values.end(), runtime::IsNull))
            continue;
        entries.push_back({.key = jet::MakeIndexKey(file.format(), index, values), .row = scan.id()});
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::vector<Entry> StoredEntries(jet::DatabaseFile& file, const jet::TableDefinition& table, const jet::Index& index) {
    std::vector<Entry> entries;
    jet::IndexCursor cursor(file, table, index);
    while (cursor.Next())
        entries.push_back({.key = {cursor.key().begin(), cursor.key().end()}, .row = cursor.row()});
    return entries;
}

}  // namespace

IndexCheck CheckIndex(jet::DatabaseFile& file, const jet::TableDefinition& table, const jet::Index& index) {
    IndexCheck check;
    const std::vector<Entry> stored = StoredEntries(file, table, index);
    check.entries = stored.size();
    std::vector<Entry> expected;
    try {
        expected = ExpectedEntries(file, table, index);
    } catch (const runtime::RuntimeError& error) {
        if (!error.Is(runtime::ErrorNumber::kFeatureNotAvailable))
            throw;
        check.has_unknown_characters = true;
        return check;
    }
    const auto [theirs, ours] = std::mismatch(stored.begin(), stored.end(), expected.begin(), expected.end());
    if (theirs != stored.end() || ours != expected.end()) {
        check.difference = "stored " + (theirs == stored.end() ? "nothing" : Describe(*theirs)) + ", expected " +
                           (ours == expected.end() ? "nothing" : Describe(*ours));
    }
    return check;
}

}  // namespace ledgix::test
