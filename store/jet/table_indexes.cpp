#include "table_indexes.h"

#include <algorithm>

#include "byte_order.h"
#include "damage_error.h"
#include "jet_format.h"
#include "runtime_error.h"

namespace ledgix::jet {

namespace {

std::vector<std::size_t> ColumnPositions(const TableDefinition& table, const Index& index) {
    std::vector<std::size_t> positions;
    for (const IndexColumn& column : index.columns) {
        const auto position = table.FindColumnByNumber(column.column_number);
        if (!position)
            RaiseDamage("index '" + index.name + "' has a column that the table lacks");
        positions.push_back(*position);
    }
    return positions;
}

// Keys of nulls only may repeat.
bool IsAllNull(const Index& index, const IndexKey& key) {
    return key.size() == index.columns.size();
}

}  // namespace

TableIndexes::TableIndexes(Pager& pager, TableDefinition& table) : pager_(pager), table_(table) {
    std::vector<std::uint32_t> seen;
    for (const Index& index : table.indexes) {
        // Several may share a tree.
        if (std::find(seen.begin(), seen.end(), index.real_number) != seen.end())
            continue;
        seen.push_back(index.real_number);
        trees_.push_back({&index, ColumnPositions(table, index), IndexTree(pager, table.page, index)});
    }
}

TableIndexes::Keys TableIndexes::KeysOf(const RowValues& values) const {
    Keys keys;
    keys.reserve(trees_.size());
    for (const Tree& tree : trees_)
        keys.push_back(KeyOf(tree, values));
    return keys;
}

std::optional<IndexKey> TableIndexes::KeyOf(const Tree& tree, const RowValues& values) const {
    const Index& index = *tree.index;
    IndexKey key;
    std::size_t nulls = 0;
    for (std::size_t i = 0; i < tree.columns.size(); ++i) {
        runtime::Variant value = values(tree.columns[i]);
        if (runtime::IsNull(value)) {
            if (table_.columns[tree.columns[i]].type == ColumnType::kBoolean)
                value = false;
            else
                ++nulls;
        }
        AppendKeyColumn(pager_.format(), index.columns[i].ascending, value, key);
    }
    if (index.required && nulls > 0)
        runtime::RaiseEngineError(runtime::ErrorNumber::kNullInKey,
                                  "Index or primary key cannot contain a Null value.");
    if (index.ignore_nulls && nulls == tree.columns.size())
        return std::nullopt;
    return key;
}

bool TableIndexes::Concern(const std::vector<bool>& columns) const {
    return std::any_of(trees_.begin(), trees_.end(), [&](const Tree& tree) {
        return std::any_of(tree.columns.begin(), tree.columns.end(), [&](std::size_t i) { return columns[i]; });
    });
}

void TableIndexes::CheckUnique(Tree& tree, const std::optional<IndexKey>& key) {
    if (key && tree.index->unique && !IsAllNull(*tree.index, *key) && tree.tree.HasKey(*key))
        runtime::RaiseEngineError(
            runtime::ErrorNumber::kDuplicateIndexValue,
            "The changes you requested to the table were not successful because they would create "
            "duplicate values in the index, primary key, or relationship.");
}

void TableIndexes::Insert(const Keys& keys, RowId row) {
    for (std::size_t i = 0; i < trees_.size(); ++i)
        CheckUnique(trees_[i], keys[i]);
    for (std::size_t i = 0; i < trees_.size(); ++i)
        Add(trees_[i], keys[i], row);
}

void TableIndexes::Update(const Keys& before, const Keys& after, RowId row) {
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        if (before[i] != after[i])
            CheckUnique(trees_[i], after[i]);
    }
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        if (before[i] == after[i])
            continue;
        if (before[i])
            trees_[i].tree.Remove(*before[i], row);
        Add(trees_[i], after[i], row);
    }
}

void TableIndexes::Remove(const Keys& keys, RowId row) {
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        if (keys[i])
            trees_[i].tree.Remove(*keys[i], row);
    }
}

void TableIndexes::Add(Tree& tree, const std::optional<IndexKey>& key, RowId row) {
    if (key && tree.tree.Insert(*key, row))
        CountDistinctKey(*tree.index);
}

// The statistic stands on the first page of the definition.
void TableIndexes::CountDistinctKey(const Index& index) {
    const DefinitionLayout& layout = pager_.format().definition;
    const std::size_t at = layout.statistics + index.real_number * layout.statistics_size + layout.distinct_keys;
    const std::span<std::uint8_t> page = pager_.Change(table_.page);
    if (at + sizeof(std::uint32_t) <= page.size())
        StoreLittle(page, at, LoadU32(page, at) + 1);
}

}  // namespace ledgix::jet
