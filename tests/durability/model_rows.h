#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "table_definition.h"
#include "variant.h"

namespace ledgix::test {

// Values by column; a row may have fewer than there are columns, the others being null.
using ModelRow = std::vector<runtime::Variant>;

struct ModelColumn {
    std::string name;
    jet::ColumnType type = jet::ColumnType::kInt32;
    std::uint16_t size = 0;  // characters of a text
};

// What a table should hold: rows by the number in their first column. Changes can be taken back, level by level.
class ModelRows {
public:
    explicit ModelRows(std::vector<ModelColumn> columns) : columns_(std::move(columns)) {}

    const std::vector<ModelColumn>& columns() const { return columns_; }
    const std::map<int, ModelRow>& rows() const { return rows_; }
    // Of a row that exists; Null, or false for a boolean, where it has none.
    runtime::Variant Value(const ModelRow& row, std::size_t column) const;

    void Put(int number, ModelRow row);
    void Remove(int number);
    void AddColumn(ModelColumn column) { columns_.push_back(std::move(column)); }

    void Begin() { levels_.push_back({columns_.size(), {}}); }
    void Keep();
    void TakeBack();

private:
    struct Level {
        std::size_t columns = 0;
        std::map<int, std::optional<ModelRow>> before;
    };

    void Note(int number);

    std::vector<ModelColumn> columns_;
    std::map<int, ModelRow> rows_;
    std::vector<Level> levels_;
};

}  // namespace ledgix::test
