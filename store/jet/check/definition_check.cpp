#include "definition_check.h"

#include <algorithm>
#include <set>
#include <string>

#include "damage_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kLongestText = 255;
constexpr std::size_t kLongestBinary = 255;
constexpr std::size_t kLongestBinaryJet4 = 510;
constexpr std::uint16_t kBooleanLength = 1;

bool IsKnownType(ColumnType type, Generation generation) {
    switch (type) {
        case ColumnType::kNumeric:
        case ColumnType::kOpaque17:
            return generation == Generation::kJet4;
        case ColumnType::kGuid:
            return true;
        default:
            return type >= ColumnType::kBoolean && type <= ColumnType::kMemo;
    }
}

bool IsSoundLength(const Column& column, const Format& format) {
    const std::size_t longest_binary = format.generation == Generation::kJet4 ? kLongestBinaryJet4 : kLongestBinary;
    switch (column.type) {
        case ColumnType::kBoolean:
            return column.length == kBooleanLength;
        case ColumnType::kText:
            return column.length <= kLongestText * format.character_size && column.length % format.character_size == 0;
        case ColumnType::kBinary:
            return column.length <= longest_binary;
        case ColumnType::kOle:
        case ColumnType::kMemo:
            return column.length == 0 && !column.fixed;
        default:
            return FixedSize(column.type) == 0 || column.length == FixedSize(column.type);
    }
}

class DefinitionCheck {
public:
    DefinitionCheck(CheckRun& run, const RawDefinition& table) : run_(run), table_(table) {}

    void Check() {
        for (const Column& column : table_.columns)
            CheckColumn(column);
        CheckFixedPart();
        CheckLongColumns();
        for (std::size_t i = 0; i < table_.real_indexes.size(); ++i)
            CheckRealIndex(i);
        for (const RawLogicalIndex& index : table_.logical_indexes)
            CheckLogicalIndex(index);
    }

private:
    void CheckColumn(const Column& column) {
        const std::string name = "column '" + column.name + "' ";
        if (column.number >= table_.columns_ever || !numbers_.insert(column.number).second)
            Add("T10", name + "has the number " + std::to_string(column.number));
        if (!column_names_.insert(column.name).second)
            Add("T11", "there are two columns '" + column.name + "'");
        if (!IsSoundLength(column, run_.format))
            Add("T12", name + "has " + std::to_string(column.length) + " bytes");
        const bool variable = !column.fixed && column.type != ColumnType::kBoolean;
        if (variable && (column.variable_index >= table_.variable_columns_ever ||
                         !variable_indexes_.insert(column.variable_index).second))
            Add("T13", name + "has the place " + std::to_string(column.variable_index) + " among the variable columns");
        if (!IsKnownType(column.type, run_.format.generation))
            Add("T14", name + "is of the unknown type " + std::to_string(static_cast<int>(column.type)));
    }

    void CheckFixedPart() {
        std::vector<const Column*> fixed;
        for (const Column& column : table_.columns) {
            if (column.fixed && column.type != ColumnType::kBoolean)
                fixed.push_back(&column);
        }
        std::sort(fixed.begin(), fixed.end(),
                  [](const Column* a, const Column* b) { return a->fixed_offset < b->fixed_offset; });
        for (std::size_t i = 1; i < fixed.size(); ++i) {
            if (fixed[i]->fixed_offset < fixed[i - 1]->fixed_offset + fixed[i - 1]->length)
                Add("T15", "columns '" + fixed[i - 1]->name + "' and '" + fixed[i]->name + "' share their place");
        }
    }

    // Maps of dropped columns may stay behind.
    void CheckLongColumns() {
        std::multiset<std::uint16_t> with_maps;
        for (const RawLongColumn& column : table_.long_columns)
            with_maps.insert(column.column_number);
        for (const Column& column : table_.columns) {
            const std::size_t maps = with_maps.count(column.number);
            if (maps != (IsLongValue(column.type) ? 1U : 0U))
                Add("T19", "column '" + column.name + "' has maps of long values " + std::to_string(maps) + " times");
        }
    }

    void CheckRealIndex(std::size_t i) {
        const RawIndex& index = table_.real_indexes[i];
        const std::string name = "the real index " + std::to_string(i) + " ";
        if (index.columns.empty())
            Add("T16", name + "has no columns");
        for (const IndexColumn& column : index.columns) {
            if (!numbers_.contains(column.column_number))
                Add("T16", name + "is on column " + std::to_string(column.column_number) + ", which is not there");
        }
        const bool has_name = std::any_of(table_.logical_indexes.begin(), table_.logical_indexes.end(),
                                          [&](const RawLogicalIndex& logical) { return logical.real_number == i; });
        if (!has_name)
            Add("T17", name + "has no logical one");
    }

    void CheckLogicalIndex(const RawLogicalIndex& index) {
        const std::string name = "index '" + index.name + "' ";
        if (!index_numbers_.insert(index.number).second)
            Add("T17", name + "has a number that another one has");
        if (!index_names_.insert(index.name).second)
            Add("T11", "there are two indexes '" + index.name + "'");
        if (index.type > kLogicalRelation)
            Add("T17", name + "is of the unknown type " + std::to_string(index.type));
        if (index.real_number >= table_.real_indexes.size()) {
            Add("T17", name + "has no real one");
            return;
        }
        if (index.type != kLogicalPrimaryKey)
            return;
        if (has_primary_key_)
            Add("T18", name + "is a second primary key");
        has_primary_key_ = true;
        if ((table_.real_indexes[index.real_number].flags & kIndexUnique) == 0)
            Add("T18", name + "is a primary key, but not unique");
    }

    void Add(std::string_view code, const std::string& text) {
        run_.findings.Add(code, "the table definition in " + DescribePage(table_.page) + ": " + text);
    }

    CheckRun& run_;
    const RawDefinition& table_;
    std::set<std::uint16_t> numbers_;
    std::set<std::uint16_t> variable_indexes_;
    std::set<std::string, runtime::LessIgnoringCase> column_names_;
    std::set<std::string, runtime::LessIgnoringCase> index_names_;
    std::set<std::uint32_t> index_numbers_;
    bool has_primary_key_ = false;
};

}  // namespace

void CheckDefinition(CheckRun& run, const RawDefinition& table) {
    DefinitionCheck(run, table).Check();
}

}  // namespace ledgix::jet
