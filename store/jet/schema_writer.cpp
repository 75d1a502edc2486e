#include "schema_writer.h"

#include <algorithm>
#include <span>

#include "byte_order.h"
#include "catalog_writer.h"
#include "column_layout.h"
#include "database_file.h"
#include "definition_parts.h"
#include "definition_reader.h"
#include "definition_writer.h"
#include "index_page_writer.h"
#include "index_tree.h"
#include "page_space.h"
#include "row_writer.h"
#include "runtime_error.h"
#include "table_scan.h"
#include "table_writer.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;

constexpr std::size_t kLongestName = 64;
constexpr std::size_t kMostColumns = 255;
constexpr std::size_t kMostIndexes = 32;
constexpr std::uint16_t kLongestText = 255;  // characters of a text, bytes of a binary column

void CheckName(const std::string& name) {
    const std::u32string characters = runtime::ToUtf32(name);
    const auto is_bad = [](char32_t c) {
        return c < U' ' || std::u32string_view(U".![]`").find(c) != std::u32string::npos;
    };
    if (characters.empty() || characters.size() > kLongestName || characters.front() == U' ' ||
        std::any_of(characters.begin(), characters.end(), is_bad))
        RaiseEngineError(ErrorNumber::kInvalidName, "'" + name + "' is not a valid name.");
}

Column ColumnOf(const Format& format, const NewColumn& wanted) {
    CheckName(wanted.name);
    const bool text = wanted.type == ColumnType::kText;
    const bool sized = text || wanted.type == ColumnType::kBinary;
    const bool known =
        sized || wanted.type == ColumnType::kBoolean || FixedSize(wanted.type) != 0 || IsLongValue(wanted.type);
    if (!known || (wanted.type == ColumnType::kNumeric && format.generation == Generation::kJet3) ||
        (sized && wanted.size > kLongestText))
        RaiseEngineError(ErrorNumber::kInvalidFieldType, "Invalid field data type of '" + wanted.name + "'.");
    Column column;
    column.name = wanted.name;
    column.type = wanted.type;
    if (sized) {
        const std::size_t size = wanted.size == 0 ? kLongestText : wanted.size;
        column.length = static_cast<std::uint16_t>(size * (text ? format.character_size : 1));
    }
    column.precision = wanted.precision;
    column.scale = wanted.scale;
    column.compressed = format.generation == Generation::kJet4 && (text || wanted.type == ColumnType::kMemo);
    if (wanted.autonumber)
        column.flags = wanted.type == ColumnType::kGuid ? kColumnAutonumberGuid : kColumnAutonumber;
    return column;
}

// Gives a table another column; it has no maps yet.
void Extend(const Format& format, TableDefinition& table, const NewColumn& wanted) {
    Column column = ColumnOf(format, wanted);
    if (table.FindColumn(wanted.name))
        RaiseEngineError(ErrorNumber::kDuplicateField, "Cannot define field '" + wanted.name + "' more than once.");
    if (table.columns_ever >= kMostColumns)
        RaiseEngineError(ErrorNumber::kTooManyFields, "Too many fields defined.");
    AddColumn(format, table, std::move(column));
    RowEncoder(format, table).Finish();  // there is room for a row of nulls at least
}

void GiveMaps(Pager& pager, PageNumber beside, Column& column) {
    column.owned_map = AddMap(pager, beside);
    column.free_space_map = AddMap(pager, beside);
}

// Writes a definition over the pages that it has; they become more or fewer as needed.
void StoreDefinition(Pager& pager, std::vector<PageNumber> pages, Bytes definition) {
    const std::size_t wanted = DefinitionPageCount(pager.format(), definition.size());
    while (pages.size() < wanted)
        pages.push_back(AllocatePage(pager));
    for (; pages.size() > wanted; pages.pop_back())
        FreePage(pager, pages.back());
    const auto contents = CutDefinition(pager.format(), definition, pages);
    for (std::size_t i = 0; i < pages.size(); ++i)
        std::copy(contents[i].begin(), contents[i].end(), pager.Overwrite(pages[i]).begin());
}

// Changes the records of a stored definition and leaves the others as they are.
template <typename Change>
void ChangeDefinition(Pager& pager, PageNumber table, Change change) {
    const StoredDefinition stored = ReadStoredDefinition(pager, table);
    DefinitionParts parts = SplitDefinition(pager.format(), stored.bytes);
    change(parts);
    StoreDefinition(pager, stored.pages, JoinDefinition(pager.format(), parts));
}

// A table's rows have no variable section until it has a variable column. Other software takes what stands in its place
// for one, so rows that are there get theirs when the first such column comes.
void RewriteRows(DatabaseFile& file, const TableDefinition& table) {
    std::vector<RowId> rows;
    for (TableScan scan(file, table); scan.Next();)
        rows.push_back(scan.id());
    TableWriter writer(file, table);
    for (const RowId row : rows)
        writer.Update(row, {});
}

Index IndexOf(const TableDefinition& table, const NewIndex& wanted) {
    Index index;
    index.name = wanted.name;
    index.primary = wanted.primary;
    index.unique = wanted.unique || wanted.primary;
    index.required = wanted.required || wanted.primary;
    index.ignore_nulls = wanted.ignore_nulls;
    for (const NewIndex::Part& part : wanted.parts) {
        const auto position = table.FindColumn(part.column);
        if (!position)
            RaiseEngineError(ErrorNumber::kItemNotFound, "Item not found in this collection: " + part.column);
        const Column& column = table.columns[*position];
        if (IsLongValue(column.type))
            RaiseEngineError(ErrorNumber::kInvalidFieldType, "The field '" + column.name + "' can't be indexed.");
        index.columns.push_back({.column_number = column.number, .ascending = part.ascending});
    }
    return index;
}

void CheckIndex(const TableDefinition& table, const NewIndex& wanted) {
    CheckName(wanted.name);
    if (table.FindIndex(wanted.name) != nullptr)
        RaiseEngineError(ErrorNumber::kIndexExists, "The index '" + wanted.name + "' already exists.");
    if (wanted.primary && table.PrimaryKey() != nullptr)
        RaiseEngineError(ErrorNumber::kPrimaryKeyExists, "Primary key already exists.");
    if (table.indexes.size() >= kMostIndexes)
        RaiseEngineError(ErrorNumber::kTooManyIndexes, "Too many indexes on the table.");
    if (wanted.parts.empty() || wanted.parts.size() > kIndexColumnSlots)
        RaiseEngineError(ErrorNumber::kInvalidIndex, "An index has one to ten fields.");
}

// The entries of the rows that are there, in order.
std::vector<IndexEntry> EntriesOf(DatabaseFile& file, const TableDefinition& table, const Index& index) {
    std::vector<std::size_t> columns;
    for (const IndexColumn& column : index.columns)
        columns.push_back(table.FindColumnByNumber(column.column_number).value());
    std::vector<IndexEntry> entries;
    for (TableScan scan(file, table); scan.Next();) {
        std::vector<runtime::Variant> values;
        std::size_t nulls = 0;
        for (const std::size_t column : columns) {
            values.push_back(scan.Value(column));
            nulls += runtime::IsNull(values.back()) ? 1U : 0U;
        }
        if (index.required && nulls > 0)
            RaiseEngineError(ErrorNumber::kNullInKey, "Index or primary key cannot contain a Null value.");
        if (!index.ignore_nulls || nulls < columns.size())
            entries.push_back({.key = MakeIndexKey(file.format(), index, values), .row = scan.id()});
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

// Keys of nothing but nulls, one byte a column, may repeat.
void CheckUnique(const std::vector<IndexEntry>& entries, std::size_t columns) {
    for (std::size_t i = 1; i < entries.size(); ++i) {
        if (entries[i].key == entries[i - 1].key && entries[i].key.size() > columns)
            RaiseEngineError(ErrorNumber::kDuplicateIndexValue,
                             "The index can't be made because the table holds duplicate values in its fields.");
    }
}

}  // namespace

TableDefinition CreateTable(DatabaseFile& file, std::string_view name, const std::vector<NewColumn>& columns) {
    CheckName(std::string(name));
    for (const CatalogEntry& entry : file.ReadCatalog()) {
        if (entry.parent_id == kTablesContainer && runtime::EqualsIgnoringCase(entry.name, name))
            RaiseEngineError(ErrorNumber::kTableExists, "Table '" + std::string(name) + "' already exists.");
    }
    TableDefinition table;
    for (const NewColumn& column : columns)
        Extend(file.format(), table, column);
    Pager& pager = file.pager();
    table.page = AllocatePage(pager);
    table.owned_map = AddMap(pager, 0);
    table.free_space_map = AddMap(pager, table.owned_map.page);
    for (const std::size_t column : LongColumns(table))
        GiveMaps(pager, table.owned_map.page, table.columns[column]);
    StoreDefinition(pager, {table.page}, EncodeDefinition(file.format(), table));
    RegisterTable(file, table.page, name);
    return table;
}

TableDefinition AddColumn(DatabaseFile& file, const TableDefinition& table, const NewColumn& column) {
    Pager& pager = file.pager();
    const Format& format = file.format();
    TableDefinition extended = table;
    Extend(format, extended, column);
    Column& added = extended.columns.back();
    if (IsLongValue(added.type))
        GiveMaps(pager, table.owned_map.page, added);
    ChangeDefinition(pager, table.page, [&](DefinitionParts& parts) {
        parts.columns.push_back(MakeColumnRecord(format, added));
        parts.column_names.push_back(MakeStoredName(format, added.name));
        if (IsLongValue(added.type))
            parts.long_column_maps.push_back(MakeLongColumnMaps(added));
        StoreLittle(parts.header, format.definition.columns_ever, extended.columns_ever);
        StoreLittle(parts.header, format.definition.variable_columns_ever, extended.variable_columns_ever);
    });
    if (table.variable_columns_ever == 0 && extended.variable_columns_ever > 0)
        RewriteRows(file, extended);
    return file.ReadTableDefinition(table.page);
}

TableDefinition CreateIndex(DatabaseFile& file, const TableDefinition& table, const NewIndex& wanted) {
    CheckIndex(table, wanted);
    Index index = IndexOf(table, wanted);
    const std::vector<IndexEntry> entries = EntriesOf(file, table, index);
    if (index.unique)
        CheckUnique(entries, index.columns.size());
    Pager& pager = file.pager();
    const Format& format = file.format();
    index.map = AddMap(pager, table.owned_map.page);
    index.root = AllocatePage(pager);
    const std::vector<std::uint8_t> root = MakeIndexLeaf(format, table.page, {});
    std::copy(root.begin(), root.end(), pager.Overwrite(index.root).begin());
    AddToMap(pager, index.map, index.root);
    index.built_entries = static_cast<std::uint32_t>(entries.size());
    index.distinct_keys = CountDistinctKeys(entries);
    for (const Index& other : table.indexes)
        index.logical_number = std::max(index.logical_number, other.logical_number + 1);
    ChangeDefinition(pager, table.page, [&](DefinitionParts& parts) {
        index.real_number = static_cast<std::uint32_t>(parts.index_blocks.size());
        parts.statistics.push_back(MakeStatistics(format, index));
        parts.index_blocks.push_back(MakeIndexBlock(format, index));
        parts.logical_indexes.push_back(MakeLogicalIndex(format, index));
        parts.index_names.push_back(MakeStoredName(format, index.name));
    });
    IndexTree tree(pager, table.page, index);
    for (const IndexEntry& entry : entries)
        tree.Insert(entry.key, entry.row);
    return file.ReadTableDefinition(table.page);
}

}  // namespace ledgix::jet
