#include "definition_parts.h"

#include <cassert>
#include <span>

#include "byte_order.h"
#include "damage_error.h"
#include "text_codec.h"

namespace ledgix::jet {

namespace {

using ByteList = std::vector<std::uint8_t>;
using Records = DefinitionParts::Records;

// Takes records from the front of a definition.
class RecordReader {
public:
    RecordReader(const Format& format, Bytes definition) : format_(format), rest_(definition) {}

    ByteList Take(std::size_t size) {
        if (size > rest_.size())
            RaiseDamage("a table definition is cut off");
        const Bytes taken = rest_.first(size);
        rest_ = rest_.subspan(size);
        return {taken.begin(), taken.end()};
    }

    Records TakeRecords(std::size_t count, std::size_t size) {
        Records records;
        for (std::size_t i = 0; i < count; ++i)
            records.push_back(Take(size));
        return records;
    }

    Records TakeNames(std::size_t count) {
        Records names;
        for (std::size_t i = 0; i < count; ++i) {
            ByteList name = Take(format_.definition.name_length_size);
            const ByteList text = Take(name.size() == 1 ? name[0] : LoadU16(name, 0));
            name.insert(name.end(), text.begin(), text.end());
            names.push_back(std::move(name));
        }
        return names;
    }

    bool AtEnd() const { return rest_.size() < kLongColumnMapsSize || LoadU16(rest_, 0) == kDefinitionEnd; }

private:
    const Format& format_;
    Bytes rest_;
};

void Append(ByteList& definition, const Records& records) {
    for (const ByteList& record : records)
        definition.insert(definition.end(), record.begin(), record.end());
}

void StoreRelation(const LogicalIndexLayout& layout, const IndexRelation& relation, std::span<std::uint8_t> record) {
    record[layout.relation_side] = relation.referenced_side ? kRelationReferencedSide : kRelationReferencingSide;
    StoreLittle(record, layout.relation_index, relation.other_index);
    StoreLittle(record, layout.relation_table, relation.other_table);
    record[layout.cascade_updates] = relation.cascades_updates ? 1 : 0;
    record[layout.cascade_deletes] = relation.cascades_deletes ? 1 : 0;
}

}  // namespace

DefinitionParts SplitDefinition(const Format& format, Bytes definition) {
    const DefinitionLayout& layout = format.definition;
    RecordReader reader(format, definition);
    DefinitionParts parts;
    parts.header = reader.Take(layout.statistics);
    const std::size_t columns = LoadU16(parts.header, layout.column_count);
    const std::size_t real_indexes = LoadU32(parts.header, layout.real_index_count);
    const std::size_t logical_indexes = LoadU32(parts.header, layout.logical_index_count);
    parts.statistics = reader.TakeRecords(real_indexes, layout.statistics_size);
    parts.columns = reader.TakeRecords(columns, format.column.size);
    parts.column_names = reader.TakeNames(columns);
    parts.index_blocks = reader.TakeRecords(real_indexes, format.index_block.size);
    parts.logical_indexes = reader.TakeRecords(logical_indexes, format.logical_index.size);
    parts.index_names = reader.TakeNames(logical_indexes);
    while (!reader.AtEnd())
        parts.long_column_maps.push_back(reader.Take(kLongColumnMapsSize));
    return parts;
}

std::vector<std::uint8_t> JoinDefinition(const Format& format, const DefinitionParts& parts) {
    const DefinitionLayout& layout = format.definition;
    ByteList definition = parts.header;
    for (const Records* records : {&parts.statistics, &parts.columns, &parts.column_names, &parts.index_blocks,
                                   &parts.logical_indexes, &parts.index_names, &parts.long_column_maps})
        Append(definition, *records);
    definition.resize(definition.size() + sizeof kDefinitionEnd);
    StoreLittle(definition, definition.size() - sizeof kDefinitionEnd, kDefinitionEnd);
    StoreLittle(definition, layout.length, static_cast<std::uint32_t>(definition.size()));
    StoreLittle(definition, layout.column_count, static_cast<std::uint16_t>(parts.columns.size()));
    StoreLittle(definition, layout.logical_index_count, static_cast<std::uint32_t>(parts.logical_indexes.size()));
    StoreLittle(definition, layout.real_index_count, static_cast<std::uint32_t>(parts.index_blocks.size()));
    return definition;
}

std::vector<std::uint8_t> MakeDefinitionHeader(const Format& format, const TableDefinition& table) {
    const DefinitionLayout& layout = format.definition;
    ByteList header(layout.statistics);
    if (layout.mark != 0) {
        StoreLittle(header, layout.mark, kDefinitionMark);
        StoreLittle(header, layout.second_mark, kSecondDefinitionMark);
    }
    StoreLittle(header, layout.row_count, table.row_count);
    StoreLittle(header, layout.last_autonumber, table.last_autonumber);
    header[layout.table_mark] = table.system ? kSystemTableMark : kUserTableMark;
    StoreLittle(header, layout.columns_ever, table.columns_ever);
    StoreLittle(header, layout.variable_columns_ever, table.variable_columns_ever);
    StoreRowPointer(header, layout.owned_map, table.owned_map);
    StoreRowPointer(header, layout.free_space_map, table.free_space_map);
    return header;
}

std::vector<std::uint8_t> MakeStatistics(const Format& format, const Index& index) {
    ByteList statistics(format.definition.statistics_size);
    StoreLittle(statistics, format.definition.built_entries, index.built_entries);
    StoreLittle(statistics, format.definition.distinct_keys, index.distinct_keys);
    return statistics;
}

std::vector<std::uint8_t> MakeColumnRecord(const Format& format, const Column& column) {
    const ColumnRecordLayout& layout = format.column;
    ByteList record(layout.size);
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
    return record;
}

std::vector<std::uint8_t> MakeIndexBlock(const Format& format, const Index& index) {
    const IndexBlockLayout& layout = format.index_block;
    ByteList block(layout.size);
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
    return block;
}

std::vector<std::uint8_t> MakeLogicalIndex(const Format& format, const Index& index) {
    const LogicalIndexLayout& layout = format.logical_index;
    ByteList record(layout.size);
    if (layout.marked)
        StoreLittle(record, 0, kDefinitionMark);
    StoreLittle(record, layout.number, index.logical_number);
    StoreLittle(record, layout.real_number, index.real_number);
    if (index.is_relation && index.relation) {
        StoreRelation(layout, *index.relation, record);
        record[layout.type] = kLogicalRelation;
        return record;
    }
    StoreLittle(record, layout.relation_index, kNoRelationIndex);
    record[layout.cascade_updates] = kNoRelationCascade;
    record[layout.cascade_deletes] = kNoRelationCascade;
    record[layout.type] = index.primary ? kLogicalPrimaryKey : 0;
    return record;
}

std::vector<std::uint8_t> MakeLongColumnMaps(const Column& column) {
    ByteList maps(kLongColumnMapsSize);
    StoreLittle(maps, 0, column.number);
    StoreRowPointer(maps, 2, column.owned_map);
    StoreRowPointer(maps, 2 + kRowPointerSize, column.free_space_map);
    return maps;
}

std::vector<std::uint8_t> MakeStoredName(const Format& format, const std::string& name) {
    const ByteList text = EncodeName(format, name);
    ByteList stored(format.definition.name_length_size);
    stored[0] = static_cast<std::uint8_t>(text.size());
    if (stored.size() == 2)
        stored[1] = static_cast<std::uint8_t>(text.size() >> 8);
    stored.insert(stored.end(), text.begin(), text.end());
    return stored;
}

}  // namespace ledgix::jet
