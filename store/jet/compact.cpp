#include "compact.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "access.h"
#include "byte_order.h"
#include "damage_error.h"
#include "database_file.h"
#include "files.h"
#include "index_cursor.h"
#include "index_tree.h"
#include "new_database.h"
#include "resume_next.h"
#include "runtime_error.h"
#include "schema_writer.h"
#include "table_scan.h"
#include "table_writer.h"
#include "text.h"

namespace ledgix::jet {

namespace {

using runtime::ErrorNumber;
using runtime::RaiseEngineError;

struct SourceTable {
    std::string name;
    TableDefinition definition;
};

// Catalogue entries of Access itself.
constexpr std::int16_t kFormEntry = -32768;
constexpr std::int16_t kMacroEntry = -32766;
constexpr std::int16_t kReportEntry = -32764;
constexpr std::int16_t kModuleEntry = -32761;

constexpr std::array<std::pair<std::int16_t, const char*>, 8> kKinds{{{kRelationEntry, "relationships"},
                                                                      {kQueryEntry, "queries"},
                                                                      {kLinkedTableEntry, "linked tables"},
                                                                      {kLinkedOdbcEntry, "linked ODBC tables"},
                                                                      {kFormEntry, "forms"},
                                                                      {kReportEntry, "reports"},
                                                                      {kMacroEntry, "macros"},
                                                                      {kModuleEntry, "modules"}}};

// What every database has.
bool IsInNewFiles(const CatalogEntry& entry) {
    if (entry.IsTable())
        return entry.DefinitionPage() <= kRelationshipsPage;
    return entry.type == kDatabaseEntry || entry.type == kContainerEntry;
}

std::vector<LeftOut> WhatStaysBehind(const std::vector<CatalogEntry>& catalog) {
    std::vector<LeftOut> left_out;
    for (const auto& [type, kind] : kKinds)
        left_out.push_back({kind, 0});
    LeftOut system_tables{"system tables", 0};
    LeftOut others{"other objects", 0};
    for (const CatalogEntry& entry : catalog) {
        if (entry.IsUserTable() || IsInNewFiles(entry))
            continue;
        const auto known =
            std::find_if(kKinds.begin(), kKinds.end(), [&](const auto& kind) { return kind.first == entry.type; });
        if (known != kKinds.end())
            ++left_out[static_cast<std::size_t>(known - kKinds.begin())].count;
        else
            ++(entry.IsTable() ? system_tables : others).count;
    }
    left_out.push_back(std::move(system_tables));
    left_out.push_back(std::move(others));
    return left_out;
}

// The sets of properties of the user's tables: defaults, rules, formats of their columns.
std::size_t CountPropertySets(DatabaseFile& source) {
    const TableDefinition catalog = source.ReadTableDefinition(kCatalogPage);
    const auto properties = catalog.FindColumn("LvProp");
    const auto id = catalog.FindColumn("Id");
    if (!properties || !id)
        return 0;
    std::vector<runtime::Variant> user_tables;
    for (const CatalogEntry& entry : source.ReadCatalog()) {
        if (entry.IsUserTable())
            user_tables.emplace_back(entry.id);
    }
    std::size_t count = 0;
    for (TableScan scan(source, catalog); scan.Next();) {
        const bool of_user_table =
            std::find(user_tables.begin(), user_tables.end(), scan.Value(*id)) != user_tables.end();
        count += of_user_table && !scan.IsNull(*properties) ? 1U : 0U;
    }
    return count;
}

bool IsKnown(ColumnType type) {
    return type == ColumnType::kBoolean || type == ColumnType::kText || type == ColumnType::kBinary ||
           FixedSize(type) != 0 || IsLongValue(type);
}

void CheckColumns(const SourceTable& table) {
    for (const Column& column : table.definition.columns) {
        if (!IsKnown(column.type) || (column.flags & kColumnMasked) != 0)
            RaiseEngineError(ErrorNumber::kInvalidFieldType,
                             "The column '" + column.name + "' of the table '" + table.name +
                                 "' can't be copied: its type, " + std::to_string(static_cast<int>(column.type)) +
                                 (IsKnown(column.type) ? " masked, is unknown." : ", is unknown."));
    }
}

std::vector<SourceTable> UserTables(DatabaseFile& source) {
    std::vector<SourceTable> tables;
    for (const CatalogEntry& entry : source.ReadCatalog()) {
        if (!entry.IsUserTable())
            continue;
        tables.push_back({entry.name, source.ReadTableDefinition(entry.DefinitionPage())});
        CheckColumns(tables.back());
    }
    return tables;
}

NewColumn NewColumnOf(const Column& column) {
    NewColumn wanted;
    wanted.name = column.name;
    wanted.type = column.type;
    if (column.type == ColumnType::kText || column.type == ColumnType::kBinary)
        wanted.size =
            static_cast<std::uint16_t>(column.type == ColumnType::kText ? column.Characters() : column.length);
    wanted.autonumber = column.autonumber;
    wanted.precision = column.precision;
    wanted.scale = column.scale;
    return wanted;
}

// The same table with text and memos as bytes, so that they are copied without being read.
TableDefinition AsBytes(TableDefinition table) {
    for (Column& column : table.columns) {
        if (column.type == ColumnType::kText)
            column.type = ColumnType::kBinary;
        else if (column.type == ColumnType::kMemo)
            column.type = ColumnType::kOle;
    }
    return table;
}

// Where the rows of a table came to be, by where they are in the source.
using NewPlaces = std::unordered_map<std::uint64_t, RowId>;

std::uint64_t PlaceNumber(RowId row) {
    return std::uint64_t{row.page} << 8 | row.slot;
}

// No index is filled by this.
NewPlaces CopyRows(DatabaseFile& source, const TableDefinition& from, DatabaseFile& target, const TableDefinition& to) {
    const TableDefinition bytes = AsBytes(from);
    TableDefinition without_indexes = AsBytes(to);
    without_indexes.indexes.clear();
    TableWriter writer(target, std::move(without_indexes));
    NewPlaces places;
    std::vector<runtime::Variant> values(bytes.columns.size());
    for (TableScan scan(source, bytes); scan.Next();) {
        std::vector<TableWriter::Assignment> unnumbered;
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = scan.Value(i);
            if (bytes.columns[i].autonumber && runtime::IsNull(values[i]))
                unnumbered.push_back({i, runtime::Null{}});
        }
        const RowId row = writer.Insert(values);
        places.emplace(PlaceNumber(scan.id()), row);
        // Inserting has given it a number.
        if (!unnumbered.empty())
            writer.Update(row, unnumbered);
    }
    StoreLittle(target.pager().Change(to.page), target.format().definition.last_autonumber, from.last_autonumber);
    return places;
}

bool IsEqual(const Index& a, const Index& b) {
    return a.columns == b.columns && a.unique == b.unique && a.ignore_nulls == b.ignore_nulls &&
           a.required == b.required;
}

// Names that the engine gives to indexes of relationships may hold what other names may not.
std::string NameFor(const Index& index, const std::vector<const Index*>& others) {
    if (!index.is_relation)
        return index.name;
    std::string name = index.name;
    std::erase_if(name, [](char c) {
        return static_cast<unsigned char>(c) < ' ' || std::string_view(".![]`").find(c) != std::string_view::npos;
    });
    name.erase(0, name.find_first_not_of(' '));
    const auto is_taken = [&](const std::string& wanted) {
        return std::any_of(others.begin(), others.end(), [&](const Index* other) {
            return other != &index && runtime::EqualsIgnoringCase(other->name, wanted);
        });
    };
    std::string wanted = name;
    for (int i = 2; wanted.empty() || is_taken(wanted); ++i)
        wanted = (name.empty() ? "Relation" : name) + std::to_string(i);
    return wanted;
}

NewIndex NewIndexOf(const TableDefinition& table, const Index& index, std::string name) {
    NewIndex wanted;
    wanted.name = std::move(name);
    for (const IndexColumn& column : index.columns)
        wanted.parts.push_back(
            {table.columns[table.FindColumnByNumber(column.column_number).value()].name, column.ascending});
    wanted.primary = index.primary;
    wanted.unique = index.unique;
    wanted.required = index.required;
    wanted.ignore_nulls = index.ignore_nulls;
    return wanted;
}

// The ordinary indexes, then those of relationships that none of them equals.
std::vector<const Index*> IndexesToMake(const TableDefinition& table) {
    std::vector<const Index*> wanted;
    for (const bool relations : {false, true}) {
        for (const Index& index : table.indexes) {
            const bool has_equal =
                std::any_of(wanted.begin(), wanted.end(), [&](const Index* made) { return IsEqual(*made, index); });
            if (index.is_relation == relations && !(relations && has_equal))
                wanted.push_back(&index);
        }
    }
    return wanted;
}

// True when a row has text in the index that we can't order: then the keys of the source are copied. They order such
// text as those of the new file, where the columns have the same sort order.
bool NeedsKeysOfSource(DatabaseFile& source, const TableDefinition& from, const Index& index,
                       const TableDefinition& to) {
    std::vector<std::size_t> columns;
    bool has_text = false;
    for (const IndexColumn& part : index.columns) {
        columns.push_back(from.FindColumnByNumber(part.column_number).value());
        const Column& column = from.columns[columns.back()];
        has_text = has_text || column.type == ColumnType::kText;
        if (column.type == ColumnType::kText && column.sort_order != to.columns[columns.back()].sort_order)
            return false;
    }
    if (!has_text)
        return false;
    for (TableScan scan(source, from); scan.Next();) {
        std::vector<runtime::Variant> values;
        for (const std::size_t column : columns)
            values.push_back(scan.Value(column));
        const auto make_key = [&] { MakeIndexKey(source.format(), index, values); };
        bool is_unknown = false;
        runtime::ResumeNext(make_key, [&](const runtime::RuntimeError& error) {
            if (!error.Is(ErrorNumber::kFeatureNotAvailable))
                throw error;
            is_unknown = true;
        });
        if (is_unknown)
            return true;
    }
    return false;
}

void CopyKeys(DatabaseFile& source, const TableDefinition& from, const Index& index, DatabaseFile& target,
              const TableDefinition& to, const Index& made, const NewPlaces& places) {
    IndexTree tree(target.pager(), to.page, made);
    std::size_t entries = 0;
    std::uint32_t distinct_keys = 0;
    for (IndexCursor cursor(source, from, index); cursor.Next(); ++entries) {
        const auto place = places.find(PlaceNumber(cursor.row()));
        if (place == places.end())
            RaiseDamage("index '" + index.name + "' has an entry for a row that is gone");
        distinct_keys += tree.Insert(cursor.key(), place->second) ? 1U : 0U;
    }
    if (entries != places.size() && !index.ignore_nulls)
        RaiseDamage("index '" + index.name + "' has not as many entries as the table has rows");
    const DefinitionLayout& layout = target.format().definition;
    const std::size_t statistics = layout.statistics + made.real_number * layout.statistics_size;
    StoreLittle(target.pager().Change(to.page), statistics + layout.built_entries, static_cast<std::uint32_t>(entries));
    StoreLittle(target.pager().Change(to.page), statistics + layout.distinct_keys, distinct_keys);
}

// Makes a table with its indexes and rows. Indexes whose keys are copied are made over the empty table.
std::size_t CopyTable(DatabaseFile& source, const SourceTable& table, DatabaseFile& target) {
    const TableDefinition& from = table.definition;
    Transaction transaction(target);
    std::vector<NewColumn> columns;
    for (const Column& column : from.columns)
        columns.push_back(NewColumnOf(column));
    TableDefinition made = CreateTable(target, table.name, columns);
    made = target.ReadTableDefinition(made.page);
    const std::vector<const Index*> indexes = IndexesToMake(from);
    std::vector<const Index*> copied;
    for (const Index* index : indexes) {
        if (NeedsKeysOfSource(source, from, *index, made))
            copied.push_back(index);
    }
    const auto make = [&](const Index* index) {
        made = CreateIndex(target, made, NewIndexOf(from, *index, NameFor(*index, indexes)));
    };
    std::for_each(copied.begin(), copied.end(), make);
    const NewPlaces places = CopyRows(source, from, target, made);
    for (const Index* index : copied)
        CopyKeys(source, from, *index, target, made, *made.FindIndex(NameFor(*index, indexes)), places);
    for (const Index* index : indexes) {
        if (std::find(copied.begin(), copied.end(), index) == copied.end())
            make(index);
    }
    transaction.Commit();
    return places.size();
}

// Text of Jet 3 stands in the code page of its file.
void CheckCodePage(const DatabaseFile& source, const DatabaseFile& target) {
    if (source.generation() == Generation::kJet3 && source.code_page() != target.code_page())
        RaiseEngineError(ErrorNumber::kFeatureNotAvailable,
                         "The file's text is of code page " + std::to_string(source.code_page()) +
                             ", and new files have code page " + std::to_string(target.code_page()) + ".");
}

std::size_t CopyTables(DatabaseFile& source, const std::vector<SourceTable>& tables, std::unique_ptr<PageFile> file,
                       runtime::Date created) {
    file->Write(0, NewDatabase(source.generation(), created));
    DatabaseFile target(std::move(file));
    CheckCodePage(source, target);
    std::size_t rows = 0;
    for (const SourceTable& table : tables)
        rows += CopyTable(source, table, target);
    target.pager().file().Sync();
    return rows;
}

std::unique_ptr<PageFile> MakeFile(FileSystem& files, const std::string& path, const std::string& like) {
    try {
        return files.Create(path, like);
    } catch (const runtime::RuntimeError&) {
        runtime::RaiseError(ErrorNumber::kDeviceIo, "The file cannot be written: " + path);
    }
}

void CheckFree(FileSystem& files, const std::string& path) {
    if (files.Exists(path))
        RaiseEngineError(ErrorNumber::kDatabaseExists, "The database exists already: " + path);
}

void Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::rename(runtime::ToPath(from), runtime::ToPath(to), error);
    if (error)
        runtime::RaiseError(ErrorNumber::kDeviceIo, "The file cannot be written: " + to);
}

}  // namespace

Compacted Compact(DatabaseFile& source, const std::string& like, const std::string& path, runtime::Date created,
                  FileSystem& files) {
    CheckFree(files, path);
    const std::vector<SourceTable> tables = UserTables(source);
    Compacted result{.tables = tables.size(), .rows = 0, .left_out = WhatStaysBehind(source.ReadCatalog())};
    result.left_out.push_back({"sets of properties of tables and columns", CountPropertySets(source)});
    std::erase_if(result.left_out, [](const LeftOut& kind) { return kind.count == 0; });
    const std::string unfinished = path + ".part";
    try {
        result.rows = CopyTables(source, tables, MakeFile(files, unfinished, like), created);
        CheckFree(files, path);
        Rename(unfinished, path);
    } catch (...) {
        files.Remove(unfinished);
        throw;
    }
    files.SyncFolderOf(path);
    return result;
}

}  // namespace ledgix::jet
