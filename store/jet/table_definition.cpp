#include "table_definition.h"

#include <algorithm>

#include "text.h"

namespace ledgix::jet {

namespace {

template <typename Condition>
std::optional<std::size_t> PositionOf(const std::vector<Column>& columns, Condition condition) {
    const auto found = std::find_if(columns.begin(), columns.end(), condition);
    if (found == columns.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

template <typename Condition>
const Index* FindIn(const std::vector<Index>& indexes, Condition condition) {
    const auto found = std::find_if(indexes.begin(), indexes.end(), condition);
    return found == indexes.end() ? nullptr : &*found;
}

}  // namespace

std::size_t FixedSize(ColumnType type) {
    switch (type) {
        case ColumnType::kByte:
            return 1;
        case ColumnType::kInt16:
            return 2;
        case ColumnType::kInt32:
        case ColumnType::kSingle:
            return 4;
        case ColumnType::kCurrency:
        case ColumnType::kDouble:
        case ColumnType::kDate:
            return 8;
        case ColumnType::kGuid:
            return 16;
        case ColumnType::kNumeric:
            return 17;
        default:
            return 0;
    }
}

bool IsLongValue(ColumnType type) {
    return type == ColumnType::kMemo || type == ColumnType::kOle;
}

std::vector<std::size_t> LongColumns(const TableDefinition& table) {
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (IsLongValue(table.columns[i].type))
            positions.push_back(i);
    }
    std::sort(positions.begin(), positions.end(),
              [&](std::size_t a, std::size_t b) { return table.columns[a].number < table.columns[b].number; });
    return positions;
}

std::optional<std::size_t> TableDefinition::FindColumn(std::string_view name) const {
    return PositionOf(columns, [&](const Column& column) { return runtime::EqualsIgnoringCase(column.name, name); });
}

std::optional<std::size_t> TableDefinition::FindColumnByNumber(std::uint16_t number) const {
    return PositionOf(columns, [&](const Column& column) { return column.number == number; });
}

const Index* TableDefinition::FindIndex(std::string_view name) const {
    return FindIn(indexes, [&](const Index& index) { return runtime::EqualsIgnoringCase(index.name, name); });
}

const Index* TableDefinition::PrimaryKey() const {
    return FindIn(indexes, [](const Index& index) { return index.primary; });
}

}  // namespace ledgix::jet
