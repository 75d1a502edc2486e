#include "definition_writer.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <string>
#include <utility>

#include "byte_order.h"
#include "damage_error.h"
#include "text.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;

// One of the logical indexes of each real one, by real number.
std::vector<const Index*> RealIndexes(const TableDefinition& table) {
    std::vector<const Index*> real;
    for (const Index& index : table.indexes) {
        if (index.real_number >= table.indexes.size())
            RaiseDamage("index '" + index.name + "' has an impossible number");
        real.resize(std::max<std::size_t>(real.size(), index.real_number + std::size_t{1}));
        real[index.real_number] = &index;
    }
    if (std::find(real.begin(), real.end(), nullptr) != real.end())
        RaiseDamage("the table definition in " + DescribePage(table.page) + " has a tree without an index");
    return real;
}

// Memo and OLE columns as their maps are listed: by name.
std::vector<const Column*> LongColumns(const TableDefinition& table) {
    std::vector<const Column*> columns;
    for (const Column& column : table.columns) {
        if (IsLongValue(column.type))
            columns.push_back(&column);
    }
    std::sort(columns.begin(), columns.end(),
              [](const Column* a, const Column* b) { return runtime::CompareIgnoringCase(a->name, b->name) < 0; });
    return columns;
}

// Writes the parts of a definition one after the other.
class DefinitionEncoder {
public:
    DefinitionEncoder(const Format& format, const TableDefinition& table)
        : format_(format), layout_(format.definition), table_(table), real_indexes_(RealIndexes(table)) {}

    ByteList Encode() {
        WriteHeader();
        WriteStatistics();
        for (const Column& column : table_.columns)
            WriteColumn(column);
        for (const Column& column : table_.columns)
            WriteName(column.name);
        for (const Index* index : real_indexes_)
            WriteIndexBlock(*index);
        for (const Index& index : table_.indexes)
            WriteLogicalIndex(index);
        for (const Index& index : table_.indexes)
            WriteName(index.name);
        WriteLongColumnMaps();
        StoreLittle(Add(sizeof kDefinitionEnd), 0, kDefinitionEnd);
        StoreLittle(definition_, layout_.length, static_cast<std::uint32_t>(definition_.size()));
        return std::move(definition_);
    }

private:
    // Appends zeros; good until the next call.
    std::span<std::uint8_t> Add(std::size_t size) {
        definition_.resize(definition_.size() + size);
        return std::span(definition_).last(size);
    }

    void WriteHeader() {
        const std::span<std::uint8_t> header = Add(layout_.statistics);
        if (layout_.mark != 0) {
            StoreLittle(header, layout_.mark, kDefinitionMark);
            StoreLittle(header, layout_.second_mark, kSecondDefinitionMark);
        }
        StoreLittle(header, layout_.row_count, table_.row_count);
        StoreLittle(header, layout_.last_autonumber, table_.last_autonumber);
        header[layout_.table_mark] = table_.system ? kSystemTableMark : kUserTableMark;
        StoreLittle(header, layout_.columns_ever, table_.columns_ever);
        StoreLittle(header, layout_.variable_columns_ever, table_.variable_columns_ever);
        StoreLittle(header, layout_.column_count, static_cast<std::uint16_t>(table_.columns.size()));
        StoreLittle(header, layout_.logical_index_count, static_cast<std::uint32_t>(table_.indexes.size()));
        StoreLittle(header, layout_.real_index_count, static_cast<std::uint32_t>(real_indexes_.size()));
        StoreRowPointer(header, layout_.owned_map, table_.owned_map);
        StoreRowPointer(header, layout_.free_space_map, table_.free_space_map);
    }

    void WriteStatistics() {
        for (const Index* index : real_indexes_) {
            const std::span<std::uint8_t> statistics = Add(layout_.statistics_size);
            StoreLittle(statistics, layout_.built_entries, index->built_entries);
            StoreLittle(statistics, layout_.distinct_keys, index->distinct_keys);
        }
    }

    void WriteColumn(const Column& column) {
        const ColumnRecordLayout& layout = format_.column;
        const std::span<std::uint8_t> record = Add(layout.size);
        record[layout.type] = static_cast<std::uint8_t>(column.type);
        if (layout.mark != 0)
            StoreLittle(record, layout.mark, kDefinitionMark);
        StoreLittle(record, layout.number, column.number);
        StoreLittle(record, layout.variable_index, column.variable_index);
        StoreLittle(record, layout.ordinal, column.ordinal);
        if (layout.country != 0)
            StoreLittle(record, layout.country, kCountryCode);
        if (layout.code_page != 0)
            StoreLittle(record, layout.code_page, kCodePage);
        StoreLittle(record, layout.precision, column.sort_order);
        if (column.type == ColumnType::kNumeric) {
            record[layout.precision] = column.precision;
            record[layout.precision + 1] = column.scale;
        }
        record[layout.flags] = column.flags;
        if (layout.text_flags != 0 && column.compressed)
            record[layout.text_flags] = kTextCompressed;
        StoreLittle(record, layout.fixed_offset, column.fixed_offset);
        StoreLittle(record, layout.length, column.length);
    }

    void WriteIndexBlock(const Index& index) {
        const IndexBlockLayout& layout = format_.index_block;
        const std::span<std::uint8_t> block = Add(layout.size);
        if (layout.marked)
            StoreLittle(block, 0, kIndexBlockMark);
        assert(index.columns.size() <= kIndexColumnSlots);
        for (std::size_t i = 0; i < kIndexColumnSlots; ++i) {
            const std::size_t place = layout.columns + i * kIndexColumnSlotSize;
            const bool used = i < index.columns.size();
            StoreLittle(block, place, used ? index.columns[i].column_number : kNoIndexColumn);
            block[place + 2] = used && index.columns[i].ascending ? kIndexAscending : 0;
        }
        StoreRowPointer(block, layout.map, index.map);
        StoreLittle(block, layout.root, index.root);
        block[layout.flags] = static_cast<std::uint8_t>(layout.more_flags | (index.unique ? kIndexUnique : 0) |
                                                        (index.ignore_nulls ? kIndexIgnoresNulls : 0) |
                                                        (index.required ? kIndexRequired : 0));
    }

    void WriteLogicalIndex(const Index& index) {
        const LogicalIndexLayout& layout = format_.logical_index;
        const std::span<std::uint8_t> record = Add(layout.size);
        if (layout.marked)
            StoreLittle(record, 0, kDefinitionMark);
        StoreLittle(record, layout.number, index.logical_number);
        StoreLittle(record, layout.real_number, index.real_number);
        if (index.is_relation && index.relation) {
            WriteRelation(*index.relation, record);
            record[layout.type] = kLogicalRelation;
            return;
        }
        StoreLittle(record, layout.relation_index, kNoRelationIndex);
        record[layout.cascade_updates] = kNoRelationCascade;
        record[layout.cascade_deletes] = kNoRelationCascade;
        record[layout.type] = index.primary ? kLogicalPrimaryKey : 0;
    }

    void WriteRelation(const IndexRelation& relation, std::span<std::uint8_t> record) const {
        const LogicalIndexLayout& layout = format_.logical_index;
        record[layout.relation_side] = relation.referenced_side ? kRelationReferencedSide : kRelationReferencingSide;
        StoreLittle(record, layout.relation_index, relation.other_index);
        StoreLittle(record, layout.relation_table, relation.other_table);
        record[layout.cascade_updates] = relation.cascades_updates ? 1 : 0;
        record[layout.cascade_deletes] = relation.cascades_deletes ? 1 : 0;
    }

    void WriteLongColumnMaps() {
        for (const Column* column : LongColumns(table_)) {
            const std::span<std::uint8_t> maps = Add(kLongColumnMapsSize);
            StoreLittle(maps, 0, column->number);
            StoreRowPointer(maps, 2, column->owned_map);
            StoreRowPointer(maps, 2 + kRowPointerSize, column->free_space_map);
        }
    }

    void WriteName(const std::string& name) {
        const ByteList stored = EncodeName(format_, name);
        const std::span<std::uint8_t> place = Add(layout_.name_length_size + stored.size());
        place[0] = static_cast<std::uint8_t>(stored.size());
        if (layout_.name_length_size == 2)
            place[1] = static_cast<std::uint8_t>(stored.size() >> 8);
        std::copy(stored.begin(), stored.end(), place.begin() + static_cast<std::ptrdiff_t>(layout_.name_length_size));
    }

    const Format& format_;
    const DefinitionLayout& layout_;
    const TableDefinition& table_;
    std::vector<const Index*> real_indexes_;
    ByteList definition_;
};

// The head of a page of a definition; `used` counts it too.
void WriteHead(const Format& format, std::size_t used, PageNumber next, ByteList& page) {
    page[0] = static_cast<std::uint8_t>(PageKind::kDefinition);
    page[1] = kPageInUse;
    const std::size_t free = page.size() - std::min(page.size(), used + kDefinitionPageHeader);
    const bool jet3 = format.generation == Generation::kJet3;
    StoreLittle(page, kDefinitionFreeBytes, jet3 ? kDefinitionMarkJet3 : static_cast<std::uint16_t>(free));
    StoreLittle(page, kDefinitionNextPage, next);
}

}  // namespace

std::vector<std::uint8_t> EncodeDefinition(const Format& format, const TableDefinition& table) {
    return DefinitionEncoder(format, table).Encode();
}

std::size_t DefinitionPageCount(const Format& format, std::size_t size) {
    const std::size_t room = format.page_size - kDefinitionPageHeader;
    return std::max<std::size_t>(1, (size - kDefinitionPageHeader + room - 1) / room);
}

std::vector<std::vector<std::uint8_t>> CutDefinition(const Format& format, Bytes definition,
                                                     const std::vector<PageNumber>& numbers) {
    assert(numbers.size() == DefinitionPageCount(format, definition.size()));
    // The head of the first page counts as part of the definition; behind it all pages are alike.
    Bytes rest = definition.subspan(kDefinitionPageHeader);
    std::vector<ByteList> pages;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ByteList page(format.page_size);
        const std::size_t size = std::min(rest.size(), page.size() - kDefinitionPageHeader);
        std::copy_n(rest.begin(), size, page.begin() + kDefinitionPageHeader);
        rest = rest.subspan(size);
        WriteHead(format, kDefinitionPageHeader + size, i + 1 < numbers.size() ? numbers[i + 1] : 0, page);
        pages.push_back(std::move(page));
    }
    return pages;
}

}  // namespace ledgix::jet
