#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jet_types.h"

namespace ledgix::jet {

class DatabaseFile;

// Kinds of catalogue entries; others occur and mean nothing here.
inline constexpr std::int16_t kTableEntry = 1;
inline constexpr std::int16_t kDatabaseEntry = 2;
inline constexpr std::int16_t kContainerEntry = 3;
inline constexpr std::int16_t kLinkedOdbcEntry = 4;
inline constexpr std::int16_t kQueryEntry = 5;
inline constexpr std::int16_t kLinkedTableEntry = 6;
inline constexpr std::int16_t kRelationEntry = 8;

// The container under which tables and queries stand.
inline constexpr std::int32_t kTablesContainer = 0x0F000001;

// One row of the catalogue table, MSysObjects.
struct CatalogEntry {
    std::int32_t id = 0;  // of a table: the page of its definition
    std::int32_t parent_id = 0;
    std::string name;
    std::int16_t type = 0;
    std::uint32_t flags = 0;
    // Of linked tables: the other file, the connection text, and the name of the table there. Else empty.
    std::string database;
    std::string connect;
    std::string foreign_name;

    bool IsTable() const { return type == kTableEntry; }
    bool IsUserTable() const;
    bool IsSystemTable() const { return IsTable() && !IsUserTable(); }
    bool IsLinkedTable() const { return type == kLinkedTableEntry || type == kLinkedOdbcEntry; }

    // Of a table. Not checked yet: reading the definition does that.
    PageNumber DefinitionPage() const { return static_cast<PageNumber>(id); }
};

// All rows of the catalogue in file order. Errors 3049, 3043.
std::vector<CatalogEntry> ReadCatalogTable(DatabaseFile& file);

// The table of any kind, linked ones included, with this name in any case; null if there is none.
const CatalogEntry* FindTable(const std::vector<CatalogEntry>& catalog, std::string_view name);

}  // namespace ledgix::jet
