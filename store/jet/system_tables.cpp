#include "system_tables.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>

#include "catalog.h"
#include "column_layout.h"
#include "text.h"

namespace ledgix::jet {

namespace {

constexpr std::uint16_t kMostCharacters = 255;

constexpr std::int32_t kRootContainer = 0x0F000000;  // has no row of its own
constexpr std::int32_t kDatabasesContainer = 0x0F000002;
constexpr std::int32_t kRelationshipsContainer = 0x0F000003;
constexpr std::int32_t kDatabaseObject = 0x10000000;
constexpr auto kSystemObject = static_cast<std::int32_t>(0x80000000);

// Well-known users and groups. Jet 4 masks them with a key that belongs to the header of a new file.
struct SecurityIdentifiers {
    runtime::Binary engine;
    runtime::Binary admin;
    runtime::Binary creator;
    runtime::Binary users;
};

SecurityIdentifiers IdentifiersOf(Generation generation) {
    if (generation == Generation::kJet3)
        return {.engine = {0x02, 0x03}, .admin = {0x03, 0x01}, .creator = {0x02, 0x04}, .users = {0x02, 0x01}};
    return {.engine = {0x65, 0x89}, .admin = {0x64, 0x8B}, .creator = {0x65, 0x8E}, .users = {0x65, 0x8B}};
}

TableDefinition EmptyTable(PageNumber page) {
    TableDefinition table;
    table.page = page;
    table.system = true;
    return table;
}

Column MakeColumn(const Format& format, std::string_view name, ColumnType type, bool masked = false) {
    Column column;
    column.name = name;
    column.type = type;
    if (type == ColumnType::kText || type == ColumnType::kBinary)
        column.length = static_cast<std::uint16_t>(kMostCharacters * format.character_size);
    column.flags = masked ? kColumnMasked : 0;
    return column;
}

Index MakeIndex(std::string_view name, const TableDefinition& table, std::initializer_list<std::string_view> columns) {
    Index index;
    index.name = name;
    index.logical_number = static_cast<std::uint32_t>(table.indexes.size());
    index.real_number = index.logical_number;
    for (const std::string_view column : columns)
        index.columns.push_back({.column_number = table.columns[table.FindColumn(column).value()].number});
    return index;
}

Index MakePrimary(Index index) {
    index.unique = true;
    index.primary = true;
    return index;
}

template <typename Named>
void SortByName(std::vector<Named>& list) {
    std::sort(list.begin(), list.end(),
              [](const Named& a, const Named& b) { return runtime::CompareIgnoringCase(a.name, b.name) < 0; });
}

// Brings the records into the order that the engine gives them.
TableDefinition Sorted(const Format& format, TableDefinition table) {
    if (format.generation == Generation::kJet4)
        SortByName(table.columns);
    SortByName(table.indexes);
    return table;
}

TableDefinition ObjectsTable(const Format& format) {
    TableDefinition table = EmptyTable(kCatalogPage);
    const auto add = [&](std::string_view name, ColumnType type, bool masked = false) {
        AddColumn(format, table, MakeColumn(format, name, type, masked));
    };
    add("Id", ColumnType::kInt32);
    add("ParentId", ColumnType::kInt32);
    add("Name", ColumnType::kText);
    add("Type", ColumnType::kInt16);
    add("DateCreate", ColumnType::kDate);
    add("DateUpdate", ColumnType::kDate);
    add("Owner", ColumnType::kBinary, true);
    add("Flags", ColumnType::kInt32);
    add("Database", ColumnType::kMemo);
    add("Connect", ColumnType::kMemo);
    add("ForeignName", ColumnType::kText);
    add("RmtInfoShort", ColumnType::kBinary);
    for (const char* name : {"RmtInfoLong", "Lv", "LvProp", "LvModule", "LvExtra"})
        add(name, ColumnType::kOle);
    table.indexes.push_back(MakeIndex("ParentIdName", table, {"ParentId", "Name"}));
    table.indexes.back().unique = true;
    table.indexes.push_back(MakePrimary(MakeIndex("Id", table, {"Id"})));
    return Sorted(format, table);
}

TableDefinition AccessTable(const Format& format) {
    TableDefinition table = EmptyTable(kAccessPage);
    AddColumn(format, table, MakeColumn(format, "ObjectId", ColumnType::kInt32));
    AddColumn(format, table, MakeColumn(format, "SID", ColumnType::kBinary, true));
    AddColumn(format, table, MakeColumn(format, "ACM", ColumnType::kInt32));
    AddColumn(format, table, MakeColumn(format, "FInheritable", ColumnType::kBoolean));
    table.indexes.push_back(MakeIndex("ObjectId", table, {"ObjectId"}));
    table.indexes.back().required = true;
    return Sorted(format, table);
}

TableDefinition QueriesTable(const Format& format) {
    TableDefinition table = EmptyTable(kQueriesPage);
    AddColumn(format, table, MakeColumn(format, "ObjectId", ColumnType::kInt32));
    AddColumn(format, table, MakeColumn(format, "Attribute", ColumnType::kByte));
    AddColumn(format, table, MakeColumn(format, "Order", ColumnType::kBinary));
    AddColumn(format, table, MakeColumn(format, "Name1", ColumnType::kText));
    AddColumn(format, table, MakeColumn(format, "Name2", ColumnType::kText));
    AddColumn(format, table, MakeColumn(format, "Expression", ColumnType::kMemo));
    AddColumn(format, table, MakeColumn(format, "Flag", ColumnType::kInt16));
    if (format.generation == Generation::kJet4)
        AddColumn(format, table, MakeColumn(format, "LvExtra", ColumnType::kInt32));
    table.indexes.push_back(MakePrimary(MakeIndex("ObjectIdAttribute", table, {"ObjectId", "Attribute", "Order"})));
    return Sorted(format, table);
}

TableDefinition RelationshipsTable(const Format& format) {
    TableDefinition table = EmptyTable(kRelationshipsPage);
    AddColumn(format, table, MakeColumn(format, "szRelationship", ColumnType::kText));
    for (const char* name : {"grbit", "ccolumn", "icolumn"})
        AddColumn(format, table, MakeColumn(format, name, ColumnType::kInt32));
    for (const char* name : {"szObject", "szColumn", "szReferencedObject", "szReferencedColumn"})
        AddColumn(format, table, MakeColumn(format, name, ColumnType::kText));
    for (const char* name : {"szRelationship", "szObject", "szReferencedObject"}) {
        table.indexes.push_back(MakeIndex(name, table, {name}));
        table.indexes.back().ignore_nulls = true;
    }
    return Sorted(format, table);
}

std::vector<SystemRow> ObjectRows(const SecurityIdentifiers& identifiers, runtime::Date created) {
    struct Object {
        std::int32_t id;
        std::int32_t parent;
        const char* name;
        std::int16_t type;
    };
    constexpr std::array kObjects{
        Object{kTablesContainer, kRootContainer, "Tables", kContainerEntry},
        Object{kDatabasesContainer, kRootContainer, "Databases", kContainerEntry},
        Object{kRelationshipsContainer, kRootContainer, "Relationships", kContainerEntry},
        Object{kDatabaseObject, kDatabasesContainer, "MSysDb", kDatabaseEntry},
        Object{kCatalogPage, kTablesContainer, "MSysObjects", kTableEntry},
        Object{kAccessPage, kTablesContainer, "MSysACEs", kTableEntry},
        Object{kQueriesPage, kTablesContainer, "MSysQueries", kTableEntry},
        Object{kRelationshipsPage, kTablesContainer, "MSysRelationships", kTableEntry},
    };
    std::vector<SystemRow> rows;
    for (const Object& object : kObjects) {
        rows.push_back({{"Id", object.id},
                        {"ParentId", object.parent},
                        {"Name", std::string(object.name)},
                        {"Type", object.type},
                        {"DateCreate", created},
                        {"DateUpdate", created},
                        {"Owner", object.type == kDatabaseEntry ? identifiers.admin : identifiers.engine},
                        {"Flags", kSystemObject}});
    }
    return rows;
}

// Who may do what with an object. The inheritable ones pass to the objects that a container gets.
std::vector<SystemRow> AccessRows(const SecurityIdentifiers& identifiers) {
    struct Entry {
        std::int32_t object;
        const runtime::Binary& identifier;
        std::int32_t rights;
        bool inheritable;
    };
    const auto& [engine, admin, creator, users] = identifiers;
    const std::array entries{
        Entry{kCatalogPage, admin, 0x60000, false},
        Entry{kAccessPage, admin, 0x60000, false},
        Entry{kQueriesPage, admin, 0x60000, false},
        Entry{kRelationshipsPage, admin, 0xE0000, false},
        Entry{kTablesContainer, creator, 0xF00FE, true},
        Entry{kTablesContainer, admin, 0x60001, false},
        Entry{kRelationshipsContainer, creator, 0xF00FE, true},
        Entry{kRelationshipsContainer, admin, 0x60001, false},
        Entry{kDatabasesContainer, admin, 0x60000, false},
        Entry{kDatabaseObject, admin, 0x6000E, false},
        Entry{kDatabaseObject, users, 0x0000E, false},
        Entry{kQueriesPage, users, 0x00014, false},
        Entry{kRelationshipsPage, users, 0x00014, false},
        Entry{kCatalogPage, users, 0x00014, false},
        Entry{kTablesContainer, users, 0xFFEFF, true},
        Entry{kRelationshipsContainer, users, 0xFFFFF, true},
    };
    std::vector<SystemRow> rows;
    for (const Entry& entry : entries) {
        rows.push_back({{"ObjectId", entry.object},
                        {"SID", entry.identifier},
                        {"ACM", entry.rights},
                        {"FInheritable", entry.inheritable}});
    }
    return rows;
}

}  // namespace

std::vector<SystemTable> MakeSystemTables(const Format& format, runtime::Date created) {
    const SecurityIdentifiers identifiers = IdentifiersOf(format.generation);
    return {{.definition = ObjectsTable(format), .rows = ObjectRows(identifiers, created)},
            {.definition = AccessTable(format), .rows = AccessRows(identifiers)},
            {.definition = QueriesTable(format), .rows = {}},
            {.definition = RelationshipsTable(format), .rows = {}}};
}

}  // namespace ledgix::jet
