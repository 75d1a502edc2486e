#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "index_key.h"
#include "index_tree.h"
#include "jet_types.h"
#include "pager.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// The values of a row by column position.
using RowValues = std::function<runtime::Variant(std::size_t column_position)>;

// The trees of all indexes of a table, kept in step with its rows. Works in the topmost level of the pager.
class TableIndexes {
public:
    // Both must outlive this.
    TableIndexes(Pager& pager, TableDefinition& table);

    // The key of a row in each tree; none where it has no entry.
    using Keys = std::vector<std::optional<IndexKey>>;

    // Errors: 3058 for Null in a key that may not hold it, 3251 for text that can't be put into an index.
    Keys KeysOf(const RowValues& values) const;

    // Whether any tree has one of these columns (by position, true: yes) in its key.
    bool Concern(const std::vector<bool>& columns) const;

    // Enters a row, or moves it from its former keys. Error 3022, before anything is changed, when a unique tree has
    // one of the keys already.
    void Insert(const Keys& keys, RowId row);
    void Update(const Keys& before, const Keys& after, RowId row);
    void Remove(const Keys& keys, RowId row);

private:
    struct Tree {
        const Index* index;
        std::vector<std::size_t> columns;  // positions
        IndexTree tree;
    };

    std::optional<IndexKey> KeyOf(const Tree& tree, const RowValues& values) const;
    void CheckUnique(Tree& tree, const std::optional<IndexKey>& key);
    void Add(Tree& tree, const std::optional<IndexKey>& key, RowId row);
    void CountDistinctKey(const Index& index);

    Pager& pager_;
    TableDefinition& table_;
    std::vector<Tree> trees_;
};

}  // namespace ledgix::jet
