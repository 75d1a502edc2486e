#include "index_cursor.h"

#include <algorithm>
#include <string>

#include "byte_order.h"
#include "damage_error.h"
#include "database_file.h"

namespace ledgix::jet {

namespace {

bool BeginsWith(Bytes key, const IndexKey& beginning) {
    return key.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), key.begin());
}

}  // namespace

IndexCursor::IndexCursor(DatabaseFile& file, const TableDefinition& table, const Index& index)
    : file_(file), table_(table), index_(index) {}

void IndexCursor::Seek(const IndexKey& key) {
    CircleGuard<PageNumber> down;
    PageNumber number = index_.root;
    for (;;) {
        if (down.RunsInCircle(number))
            RaiseDamage("the tree of index '" + index_.name + "' runs in a circle");
        leaf_.emplace(file_.pager(), number, table_.page);
        next_place_ = leaf_->LowerBound(key);
        if (leaf_->IsLeaf())
            break;
        number = leaf_->ChildFrom(next_place_);
    }
    guard_ = {};
    guard_.RunsInCircle(number);
    entry_.clear();
}

bool IndexCursor::Next() {
    if (!leaf_)
        Seek({});
    while (next_place_ == leaf_->used()) {
        const PageNumber next = leaf_->next();
        if (next == 0)
            return false;
        if (guard_.RunsInCircle(next))
            RaiseDamage("the leaves of index '" + index_.name + "' run in a circle");
        leaf_.emplace(file_.pager(), next, table_.page);
        if (!leaf_->IsLeaf())
            RaiseDamage(DescribePage(next) + " is no leaf of index '" + index_.name + "'");
        next_place_ = 0;
    }
    previous_.swap(entry_);
    leaf_->ReadEntry(next_place_, entry_);
    next_place_ = leaf_->EndOf(next_place_);
    if (!previous_.empty() &&
        !std::lexicographical_compare(previous_.begin(), previous_.end(), entry_.begin(), entry_.end()))
        RaiseDamage("the entries of index '" + index_.name + "' do not ascend in " + DescribePage(leaf_->number()));
    return true;
}

RowId IndexCursor::row() const {
    const std::size_t at = entry_.size() - kLeafPointerSize;
    return {.page = LoadBig<std::uint32_t>(entry_, at) >> 8, .slot = entry_[at + 3]};
}

std::vector<RowId> FindRows(DatabaseFile& file, const TableDefinition& table, const Index& index,
                            const std::vector<runtime::Variant>& values) {
    const IndexKey key = MakeIndexKey(file.format(), index, values);
    std::vector<RowId> rows;
    IndexCursor cursor(file, table, index);
    cursor.Seek(key);
    while (cursor.Next() && BeginsWith(cursor.key(), key))
        rows.push_back(cursor.row());
    return rows;
}

}  // namespace ledgix::jet
