#include "catalog_writer.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "catalog.h"
#include "clock.h"
#include "damage_error.h"
#include "database_file.h"
#include "date_time.h"
#include "jet_format.h"
#include "table_scan.h"
#include "table_writer.h"

namespace ledgix::jet {

namespace {

using runtime::Binary;
using runtime::Variant;

constexpr std::uint8_t kEngineIdentifier[]{0x02, 0x03};
constexpr std::uint8_t kCreatorIdentifier[]{0x02, 0x04};

// Whose the objects of a file are.
struct Owners {
    Binary owner;    // of the database, and of new tables
    Binary creator;  // stands for whoever makes an object
};

// A system table with its columns by name.
class SystemTableAccess {
public:
    SystemTableAccess(DatabaseFile& file, PageNumber page) : file_(file), table_(file.ReadTableDefinition(page)) {}

    const TableDefinition& table() const { return table_; }

    std::size_t Column(std::string_view name) const {
        const auto position = table_.FindColumn(name);
        if (!position)
            RaiseDamage("the catalogue has no column '" + std::string(name) + "'");
        return *position;
    }

    void Insert(const std::vector<std::pair<std::string_view, Variant>>& row) {
        std::vector<Variant> values(table_.columns.size());
        for (const auto& [name, value] : row)
            values[Column(name)] = value;
        TableWriter(file_, table_).Insert(values);
    }

private:
    DatabaseFile& file_;
    TableDefinition table_;
};

template <typename Value>
Value Get(TableScan& scan, std::size_t column) {
    const Variant value = scan.Value(column);
    const Value* held = std::get_if<Value>(&value);
    return held == nullptr ? Value{} : *held;
}

// Jet 4 masks identifiers with a key stream that differs from file to file; the engine's own, which is known, tells its
// first bytes.
Binary MaskedCreator(const Binary& engine) {
    Binary creator(std::begin(kCreatorIdentifier), std::end(kCreatorIdentifier));
    for (std::size_t i = 0; i < creator.size() && i < engine.size(); ++i)
        creator[i] = static_cast<std::uint8_t>(creator[i] ^ engine[i] ^ kEngineIdentifier[i]);
    return creator;
}

Owners FindOwners(DatabaseFile& file, const SystemTableAccess& objects) {
    Owners owners;
    const std::size_t id = objects.Column("Id");
    const std::size_t type = objects.Column("Type");
    const std::size_t owner = objects.Column("Owner");
    for (TableScan scan(file, objects.table()); scan.Next();) {
        if (Get<std::int32_t>(scan, id) == kTablesContainer)
            owners.creator = MaskedCreator(Get<Binary>(scan, owner));
        if (Get<std::int16_t>(scan, type) == kDatabaseEntry)
            owners.owner = Get<Binary>(scan, owner);
    }
    if (owners.owner.empty() || owners.creator.empty())
        RaiseDamage("the catalogue does not say whose the database is");
    return owners;
}

struct Right {
    Binary holder;  // a user or group
    std::int32_t mask = 0;
};

// What users and groups may do with a new table; each appears once.
std::vector<Right> InheritedRights(DatabaseFile& file, const SystemTableAccess& rights, const Owners& owners) {
    std::vector<Right> inherited;
    const std::size_t object = rights.Column("ObjectId");
    const std::size_t identifier = rights.Column("SID");
    const std::size_t mask = rights.Column("ACM");
    const std::size_t inheritable = rights.Column("FInheritable");
    for (TableScan scan(file, rights.table()); scan.Next();) {
        if (Get<std::int32_t>(scan, object) != kTablesContainer || !Get<bool>(scan, inheritable))
            continue;
        Binary holder = Get<Binary>(scan, identifier);
        if (holder == owners.creator)
            holder = owners.owner;
        auto found = std::find_if(inherited.begin(), inherited.end(),
                                  [&](const Right& right) { return right.holder == holder; });
        if (found == inherited.end())
            found = inherited.insert(found, {.holder = holder});
        found->mask |= Get<std::int32_t>(scan, mask);
    }
    return inherited;
}

}  // namespace

void RegisterTable(DatabaseFile& file, PageNumber definition_page, std::string_view name) {
    SystemTableAccess objects(file, kCatalogPage);
    SystemTableAccess rights(file, kAccessPage);
    const Owners owners = FindOwners(file, objects);
    const runtime::Date now = runtime::ToDate(runtime::SystemTime().Now());
    const auto id = static_cast<std::int32_t>(definition_page);
    objects.Insert({{"Id", id},
                    {"ParentId", kTablesContainer},
                    {"Name", std::string(name)},
                    {"Type", kTableEntry},
                    {"DateCreate", now},
                    {"DateUpdate", now},
                    {"Owner", owners.owner},
                    {"Flags", std::int32_t{0}}});
    for (const Right& right : InheritedRights(file, rights, owners))
        rights.Insert({{"ObjectId", id}, {"SID", right.holder}, {"ACM", right.mask}, {"FInheritable", false}});
}

}  // namespace ledgix::jet
