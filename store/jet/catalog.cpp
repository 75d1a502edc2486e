#include "catalog.h"

#include <algorithm>
#include <optional>
#include <variant>

#include "damage_error.h"
#include "database_file.h"
#include "table_scan.h"
#include "text.h"

namespace ledgix::jet {

namespace {

// Marks of entries that belong to the system: made by the engine, made by Access.
constexpr std::uint32_t kSystemFlags = 0x80000002;

// The rows of MSysObjects, columns found by name.
class CatalogScan {
public:
    explicit CatalogScan(DatabaseFile& file)
        : definition_(file.ReadTableDefinition(kCatalogPage)), scan_(file, definition_) {}

    std::vector<CatalogEntry> ReadAll() {
        std::vector<CatalogEntry> entries;
        while (scan_.Next())
            entries.push_back(ReadEntry());
        return entries;
    }

private:
    CatalogEntry ReadEntry() {
        CatalogEntry entry;
        entry.id = Get<std::int32_t>(id_);
        entry.parent_id = Get<std::int32_t>(parent_id_);
        entry.name = Get<std::string>(name_);
        entry.type = Get<std::int16_t>(type_);
        entry.flags = static_cast<std::uint32_t>(Get<std::int32_t>(flags_));
        if (entry.IsLinkedTable()) {
            entry.database = Get<std::string>(database_);
            entry.connect = Get<std::string>(connect_);
            entry.foreign_name = Get<std::string>(foreign_name_);
        }
        return entry;
    }

    // A null reads as the zero of its type.
    template <typename Value>
    Value Get(std::size_t column) {
        runtime::Variant value = scan_.Value(column);
        return runtime::IsNull(value) ? Value{} : std::get<Value>(std::move(value));
    }

    std::size_t Require(std::string_view name, ColumnType type) const {
        const std::optional<std::size_t> column = definition_.FindColumn(name);
        if (!column || definition_.columns[*column].type != type)
            RaiseDamage("the catalogue has no sound column '" + std::string(name) + "'");
        return *column;
    }

    TableDefinition definition_;
    TableScan scan_;
    std::size_t id_ = Require("Id", ColumnType::kInt32);
    std::size_t parent_id_ = Require("ParentId", ColumnType::kInt32);
    std::size_t name_ = Require("Name", ColumnType::kText);
    std::size_t type_ = Require("Type", ColumnType::kInt16);
    std::size_t flags_ = Require("Flags", ColumnType::kInt32);
    std::size_t database_ = Require("Database", ColumnType::kMemo);
    std::size_t connect_ = Require("Connect", ColumnType::kMemo);
    std::size_t foreign_name_ = Require("ForeignName", ColumnType::kText);
};

}  // namespace

bool CatalogEntry::IsUserTable() const {
    return IsTable() && (flags & kSystemFlags) == 0;
}

std::vector<CatalogEntry> ReadCatalogTable(DatabaseFile& file) {
    return CatalogScan(file).ReadAll();
}

const CatalogEntry* FindTable(const std::vector<CatalogEntry>& catalog, std::string_view name) {
    const auto found = std::find_if(catalog.begin(), catalog.end(), [&](const CatalogEntry& entry) {
        return (entry.IsTable() || entry.IsLinkedTable()) && runtime::EqualsIgnoringCase(entry.name, name);
    });
    return found == catalog.end() ? nullptr : &*found;
}

}  // namespace ledgix::jet
