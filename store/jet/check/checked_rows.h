#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "check_run.h"
#include "row_page.h"
#include "row_view.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

struct LiveRow {
    RowId home;
    RowId place;            // of its bytes: another one when it has moved
    bool readable = false;  // it decodes without faults
};

// The live rows of a table that was checked, by home slot.
class CheckedRows {
public:
    // The definition must outlive it.
    CheckedRows(CheckRun& run, const TableDefinition& table) : run_(run), table_(table), shape_(table) {}

    // Rows come ascending.
    void Add(const LiveRow& row) { rows_.push_back(row); }
    std::size_t size() const { return rows_.size(); }
    LiveRow& operator[](std::size_t i) { return rows_[i]; }
    std::optional<std::size_t> Find(RowId home) const;

    const TableDefinition& table() const { return table_; }

    // Makes a readable row the current one.
    void Open(std::size_t i);

    // Of the current row. None for a long value that is too long to be worth fetching. Error 3049 for one in ruins.
    std::optional<runtime::Variant> Value(const Column& column) const;

private:
    CheckRun& run_;
    const TableDefinition& table_;
    RowShape shape_;
    std::vector<LiveRow> rows_;
    RowPage page_;  // keeps the bytes of view_
    RowView view_;
};

}  // namespace ledgix::jet
