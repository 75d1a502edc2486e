#include "definition_reader.h"

#include <algorithm>
#include <set>
#include <string>

#include "byte_order.h"
#include "circle_guard.h"
#include "damage_error.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

constexpr std::size_t kMostColumns = 255;
constexpr std::uint32_t kMostIndexes = 255;  // the engine makes 32 at most
constexpr std::uint8_t kLargestScale = 28;

// The definition of one real index, before the logical indexes give it a name.
struct RealIndex {
    std::vector<IndexColumn> columns;
    RowId map;
    PageNumber root = 0;
    std::uint8_t flags = 0;
    std::uint32_t built_entries = 0;
    std::uint32_t distinct_keys = 0;
};

// Takes the parts of a definition one after the other.
class DefinitionParser {
public:
    DefinitionParser(const Format& format, PageNumber page, Bytes definition)
        : format_(format), layout_(format.definition), definition_(definition) {
        table_.page = page;
    }

    TableDefinition Parse() {
        ReadHeader();
        ReadStatistics();
        ReadColumns();
        ReadIndexBlocks();
        ReadLogicalIndexes();
        ReadLongColumnMaps();
        std::stable_sort(table_.columns.begin(), table_.columns.end(),
                         [](const Column& a, const Column& b) { return a.ordinal < b.ordinal; });
        return std::move(table_);
    }

private:
    void ReadHeader() {
        const Bytes header = Take(layout_.statistics);
        const std::uint8_t mark = header[layout_.table_mark];
        if (mark != kUserTableMark && mark != kSystemTableMark)
            Raise("is of an unknown kind");
        table_.system = mark == kSystemTableMark;
        table_.row_count = LoadU32(header, layout_.row_count);
        table_.last_autonumber = LoadU32(header, layout_.last_autonumber);
        table_.columns_ever = LoadU16(header, layout_.columns_ever);
        table_.variable_columns_ever = LoadU16(header, layout_.variable_columns_ever);
        table_.owned_map = LoadRowPointer(header, layout_.owned_map);
        table_.free_space_map = LoadRowPointer(header, layout_.free_space_map);
        column_count_ = LoadU16(header, layout_.column_count);
        if (column_count_ > kMostColumns || column_count_ > table_.columns_ever)
            Raise("claims " + std::to_string(column_count_) + " columns");
        logical_count_ = LoadU32(header, layout_.logical_index_count);
        real_count_ = LoadU32(header, layout_.real_index_count);
        if (std::max(logical_count_, real_count_) > kMostIndexes)
            Raise("claims " + std::to_string(std::max(logical_count_, real_count_)) + " indexes");
    }

    void ReadStatistics() {
        for (std::uint32_t i = 0; i < real_count_; ++i) {
            const Bytes statistics = Take(layout_.statistics_size);
            RealIndex& index = real_indexes_.emplace_back();
            index.built_entries = LoadU32(statistics, layout_.built_entries);
            index.distinct_keys = LoadU32(statistics, layout_.distinct_keys);
        }
    }

    void ReadColumns() {
        for (std::size_t i = 0; i < column_count_; ++i)
            table_.columns.push_back(ParseColumn(Take(format_.column.size)));
        for (Column& column : table_.columns) {
            column.name = TakeName();
            CheckColumn(column);
        }
        CheckFixedPart();
    }

    void CheckFixedPart() const {
        std::vector<const Column*> fixed;
        for (const Column& column : table_.columns) {
            if (column.fixed && column.type != ColumnType::kBoolean)
                fixed.push_back(&column);
        }
        std::sort(fixed.begin(), fixed.end(),
                  [](const Column* a, const Column* b) { return a->fixed_offset < b->fixed_offset; });
        for (std::size_t i = 1; i < fixed.size(); ++i) {
            if (fixed[i]->fixed_offset < fixed[i - 1]->fixed_offset + fixed[i - 1]->length)
                RaiseColumn(*fixed[i], "shares its place with column '" + fixed[i - 1]->name + "'");
        }
    }

    Column ParseColumn(Bytes record) const {
        const ColumnRecordLayout& layout = format_.column;
        Column column;
        column.type = static_cast<ColumnType>(record[layout.type]);
        // Numeric came with Jet 4; before, it is a type like any unknown one.
        if (column.type == ColumnType::kNumeric && format_.generation == Generation::kJet3)
            column.type = ColumnType::kOpaque17;
        column.number = LoadU16(record, layout.number);
        column.variable_index = LoadU16(record, layout.variable_index);
        column.ordinal = LoadU16(record, layout.ordinal);
        column.flags = record[layout.flags];
        column.fixed = (column.flags & kColumnFixed) != 0;
        column.autonumber = (column.flags & (kColumnAutonumber | kColumnAutonumberGuid)) != 0;
        column.fixed_offset = LoadU16(record, layout.fixed_offset);
        column.length = LoadU16(record, layout.length);
        column.character_size = static_cast<std::uint8_t>(format_.character_size);
        column.compressed = layout.text_flags != 0 && (record[layout.text_flags] & kTextCompressed) != 0;
        if (column.type == ColumnType::kNumeric) {
            column.precision = record[layout.precision];
            column.scale = record[layout.precision + 1];
        } else {
            column.sort_order = LoadU16(record, layout.precision);
        }
        return column;
    }

    void CheckColumn(const Column& column) {
        if (column.number >= table_.columns_ever || !numbers_.insert(column.number).second)
            RaiseColumn(column, "has number " + std::to_string(column.number));
        if (column.scale > kLargestScale)
            RaiseColumn(column, "has " + std::to_string(column.scale) + " decimals");
        if (column.type == ColumnType::kBoolean)
            return;
        if (!column.fixed) {
            const std::uint16_t index = column.variable_index;
            if (index >= table_.variable_columns_ever || !variable_indexes_.insert(index).second)
                RaiseColumn(column, "has place " + std::to_string(index) + " among the variable columns");
            return;
        }
        const std::size_t size = FixedSize(column.type);
        if (IsLongValue(column.type) || (size != 0 && size != column.length))
            RaiseColumn(column, "has " + std::to_string(column.length) + " bytes");
    }

    void ReadIndexBlocks() {
        const IndexBlockLayout& layout = format_.index_block;
        for (RealIndex& index : real_indexes_) {
            const Bytes block = Take(layout.size);
            index.map = LoadRowPointer(block, layout.map);
            index.root = LoadU32(block, layout.root);
            index.flags = block[layout.flags];
            for (std::size_t i = 0; i < kIndexColumnSlots; ++i)
                ReadIndexColumn(block.subspan(layout.columns + i * kIndexColumnSlotSize), index);
        }
    }

    void ReadIndexColumn(Bytes place, RealIndex& index) {
        const std::uint16_t number = LoadU16(place, 0);
        if (number == kNoIndexColumn)
            return;
        if (!numbers_.contains(number))
            Raise("has an index on column number " + std::to_string(number) + ", which it lacks");
        index.columns.push_back({.column_number = number, .ascending = place[2] == kIndexAscending});
    }

    void ReadLogicalIndexes() {
        for (std::uint32_t i = 0; i < logical_count_; ++i)
            table_.indexes.push_back(ParseLogicalIndex(Take(format_.logical_index.size)));
        for (Index& index : table_.indexes)
            index.name = TakeName();
    }

    Index ParseLogicalIndex(Bytes record) const {
        const LogicalIndexLayout& layout = format_.logical_index;
        Index index;
        index.logical_number = LoadU32(record, layout.number);
        index.real_number = LoadU32(record, layout.real_number);
        index.primary = record[layout.type] == kLogicalPrimaryKey;
        index.is_relation = record[layout.type] == kLogicalRelation;
        if (index.is_relation) {
            index.relation = {.referenced_side = record[layout.relation_side] == kRelationReferencedSide,
                              .other_table = LoadU32(record, layout.relation_table),
                              .other_index = LoadU32(record, layout.relation_index),
                              .cascades_updates = record[layout.cascade_updates] == 1,
                              .cascades_deletes = record[layout.cascade_deletes] == 1};
        }
        if (index.real_number >= real_indexes_.size())
            Raise("has an index without a tree");
        const RealIndex& real = real_indexes_[index.real_number];
        index.columns = real.columns;
        index.unique = (real.flags & kIndexUnique) != 0;
        index.ignore_nulls = (real.flags & kIndexIgnoresNulls) != 0;
        index.required = (real.flags & kIndexRequired) != 0;
        index.root = real.root;
        index.map = real.map;
        index.built_entries = real.built_entries;
        index.distinct_keys = real.distinct_keys;
        return index;
    }

    void ReadLongColumnMaps() {
        while (LoadU16(Peek(2), 0) != kDefinitionEnd) {
            const Bytes maps = Take(kLongColumnMapsSize);
            const std::optional<std::size_t> column = table_.FindColumnByNumber(LoadU16(maps, 0));
            if (!column)
                continue;
            table_.columns[*column].owned_map = LoadRowPointer(maps, 2);
            table_.columns[*column].free_space_map = LoadRowPointer(maps, 2 + kRowPointerSize);
        }
    }

    std::string TakeName() {
        const Bytes length = Take(layout_.name_length_size);
        return DecodeName(format_, Take(length.size() == 1 ? length[0] : LoadU16(length, 0)));
    }

    Bytes Peek(std::size_t size) const {
        if (size > definition_.size() - at_)
            Raise("is cut off");
        return definition_.subspan(at_, size);
    }

    Bytes Take(std::size_t size) {
        const Bytes taken = Peek(size);
        at_ += size;
        return taken;
    }

    [[noreturn]] void Raise(const std::string& fault) const {
        RaiseDamage("the table definition in " + DescribePage(table_.page) + " " + fault);
    }

    [[noreturn]] void RaiseColumn(const Column& column, const std::string& fault) const {
        RaiseDamage("column '" + column.name + "' of the table definition in " + DescribePage(table_.page) + " " +
                    fault);
    }

    const Format& format_;
    const DefinitionLayout& layout_;
    Bytes definition_;
    std::size_t at_ = 0;
    TableDefinition table_;
    std::size_t column_count_ = 0;
    std::uint32_t logical_count_ = 0;
    std::uint32_t real_count_ = 0;
    std::vector<RealIndex> real_indexes_;
    std::set<std::uint16_t> numbers_;
    std::set<std::uint16_t> variable_indexes_;
};

}  // namespace

StoredDefinition ReadStoredDefinition(Pager& pager, PageNumber first) {
    constexpr std::string_view kWhat = "table definition";
    PagePtr page = pager.Read(first, PageKind::kDefinition, kWhat);
    StoredDefinition stored{.pages = {first}, .bytes = page->bytes};
    std::vector<std::uint8_t>& joined = stored.bytes;
    const std::size_t length = LoadU32(joined, pager.format().definition.length);
    if (length < pager.format().definition.statistics || length > pager.size())
        RaiseDamage("the table definition in " + DescribePage(first) + " claims " + std::to_string(length) + " bytes");
    CircleGuard<PageNumber> guard;
    guard.RunsInCircle(first);
    while (joined.size() < length) {
        const PageNumber next = LoadU32(page->bytes, kDefinitionNextPage);
        if (next == 0)
            RaiseDamage("the table definition in " + DescribePage(first) + " lacks its last pages");
        if (guard.RunsInCircle(next))
            RaiseDamage("the pages of the table definition in " + DescribePage(first) + " run in a circle");
        page = pager.Read(next, PageKind::kDefinition, kWhat);
        stored.pages.push_back(next);
        joined.insert(joined.end(), page->bytes.begin() + kDefinitionPageHeader, page->bytes.end());
    }
    joined.resize(length);
    return stored;
}

TableDefinition ReadDefinition(Pager& pager, PageNumber page) {
    const StoredDefinition stored = ReadStoredDefinition(pager, page);
    return DefinitionParser(pager.format(), page, stored.bytes).Parse();
}

}  // namespace ledgix::jet
