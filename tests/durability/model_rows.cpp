#include "model_rows.h"

#include <utility>

namespace ledgix::test {

runtime::Variant ModelRows::Value(const ModelRow& row, std::size_t column) const {
    const runtime::Variant value = column < row.size() ? row[column] : runtime::Variant();
    if (runtime::IsNull(value) && columns_[column].type == jet::ColumnType::kBoolean)
        return false;
    return value;
}

void ModelRows::Note(int number) {
    if (levels_.empty())
        return;
    const auto found = rows_.find(number);
    levels_.back().before.try_emplace(number, found == rows_.end() ? std::nullopt : std::optional(found->second));
}

void ModelRows::Put(int number, ModelRow row) {
    Note(number);
    rows_[number] = std::move(row);
}

void ModelRows::Remove(int number) {
    Note(number);
    rows_.erase(number);
}

void ModelRows::Keep() {
    Level top = std::move(levels_.back());
    levels_.pop_back();
    if (levels_.empty())
        return;
    for (auto& [number, row] : top.before)
        levels_.back().before.try_emplace(number, std::move(row));
}

void ModelRows::TakeBack() {
    for (auto& [number, row] : levels_.back().before) {
        if (row)
            rows_[number] = std::move(*row);
        else
            rows_.erase(number);
    }
    columns_.resize(levels_.back().columns);
    levels_.pop_back();
}

}  // namespace ledgix::test
