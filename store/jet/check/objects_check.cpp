#include "objects_check.h"

#include <algorithm>
#include <utility>

#include "catalog.h"
#include "damage_error.h"
#include "text.h"

namespace ledgix::jet {

namespace {

constexpr std::int32_t kRoot = 0x0F000000;  // parent of the containers; no object itself

struct SystemObject {
    std::string_view code;
    std::int32_t id;
    std::string_view name;
    std::int16_t type;
};
constexpr SystemObject kSystemObjects[]{{"C5", kTablesContainer, "Tables", kContainerEntry},
                                        {"C5", kTablesContainer + 1, "Databases", kContainerEntry},
                                        {"C5", kTablesContainer + 2, "Relationships", kContainerEntry},
                                        {"C5", 0x10000000, "MSysDb", kDatabaseEntry},
                                        {"C8", kCatalogPage, "MSysObjects", kTableEntry},
                                        {"C8", kAccessPage, "MSysACEs", kTableEntry},
                                        {"C8", kQueriesPage, "MSysQueries", kTableEntry},
                                        {"C8", kRelationshipsPage, "MSysRelationships", kTableEntry}};

// The column with this name and type; null, with a finding, when there is none.
const Column* FindTyped(CheckRun& run, const CheckedRows& rows, std::string_view name, ColumnType type) {
    const TableDefinition& table = rows.table();
    const std::optional<std::size_t> position = table.FindColumn(name);
    if (position && table.columns[*position].type == type)
        return &table.columns[*position];
    run.findings.Add("C1", "the table definition in " + DescribePage(table.page) + ": it has no sound column '" +
                               std::string(name) + "'");
    return nullptr;
}

// A null gives the zero of its type.
template <typename Value>
Value Get(const CheckedRows& rows, const Column& column) {
    const std::optional<runtime::Variant> value = rows.Value(column);
    const Value* typed = value ? std::get_if<Value>(&*value) : nullptr;
    return typed == nullptr ? Value{} : *typed;
}

// Without regard to case, as names compare.
using NameKey = std::pair<std::int32_t, std::string>;

class ObjectsCheck {
public:
    ObjectsCheck(CheckRun& run, const ObjectFacts& facts) : run_(run), facts_(facts) {}

    void Check() {
        for (const ObjectEntry& object : facts_.objects)
            CheckIdentity(object);
        for (const SystemObject& object : kSystemObjects)
            CheckPresent(object);
        for (const ObjectEntry& object : facts_.objects) {
            CheckParent(object);
            CheckAccess(object);
        }
        for (const auto& [page, indexes] : facts_.indexes) {
            for (const RawLogicalIndex& index : indexes)
                CheckRelation(page, index);
        }
    }

private:
    void CheckIdentity(const ObjectEntry& object) {
        if (object.name.empty())
            Add("C9", object, "it has no name");
        if (!by_id_.emplace(object.id, &object).second)
            Add("C2", object, "another object has its number " + std::to_string(object.id));
        if (!names_.insert({object.parent, runtime::FoldCase(object.name)}).second)
            Add("C3", object, "another object has its name");
        if (object.type != kTableEntry)
            return;
        if (object.parent != kTablesContainer)
            Add("C6", object, "it is a table outside 'Tables'");
        if (object.id < 0 || !facts_.indexes.contains(static_cast<PageNumber>(object.id)))
            Add("C7", object, "it is a table without a definition");
    }

    void CheckPresent(const SystemObject& object) {
        const auto found = by_id_.find(object.id);
        if (found == by_id_.end() || found->second->name != object.name || found->second->type != object.type)
            run_.findings.Add(object.code, "the catalogue has no '" + std::string(object.name) + "' in its place");
    }

    void CheckParent(const ObjectEntry& object) {
        if (object.parent != kRoot && !by_id_.contains(object.parent))
            Add("C4", object, "its parent " + std::to_string(object.parent) + " is not there");
    }

    void CheckAccess(const ObjectEntry& object) {
        if (!facts_.has_access_table || facts_.with_access.contains(object.id))
            return;
        const std::string text = "nobody has rights to it";
        if (object.type == kTableEntry)
            Add("C10", object, text);
        else
            run_.findings.AddIfStrict("C10", Name(object) + text);
    }

    void CheckRelation(PageNumber table, const RawLogicalIndex& index) {
        if (index.type != kLogicalRelation)
            return;
        const auto other = facts_.indexes.find(index.relation_table);
        const bool has_partner =
            other != facts_.indexes.end() &&
            std::any_of(other->second.begin(), other->second.end(), [&](const RawLogicalIndex& partner) {
                return partner.number == index.relation_index && partner.type == kLogicalRelation &&
                       partner.relation_table == table && partner.relation_index == index.number &&
                       partner.relation_side + index.relation_side ==
                           kRelationReferencedSide + kRelationReferencingSide;
            });
        if (!has_partner)
            run_.findings.Add("C11", "the table definition in " + DescribePage(table) + ": the relation '" +
                                         index.name + "' has no other side in the table in page " +
                                         std::to_string(index.relation_table));
    }

    static std::string Name(const ObjectEntry& object) {
        return Describe(object.row) + ", object '" + object.name + "': ";
    }

    void Add(std::string_view code, const ObjectEntry& object, const std::string& text) {
        run_.findings.Add(code, Name(object) + text);
    }

    CheckRun& run_;
    const ObjectFacts& facts_;
    std::map<std::int32_t, const ObjectEntry*> by_id_;
    std::set<NameKey> names_;
};

}  // namespace

std::vector<ObjectEntry> ReadObjects(CheckRun& run, CheckedRows& rows) {
    const Column* id = FindTyped(run, rows, "Id", ColumnType::kInt32);
    const Column* parent = FindTyped(run, rows, "ParentId", ColumnType::kInt32);
    const Column* name = FindTyped(run, rows, "Name", ColumnType::kText);
    const Column* type = FindTyped(run, rows, "Type", ColumnType::kInt16);
    std::vector<ObjectEntry> objects;
    if (id == nullptr || parent == nullptr || name == nullptr || type == nullptr)
        return objects;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!rows[i].readable)
            continue;
        rows.Open(i);
        objects.push_back({.row = rows[i].home,
                           .id = Get<std::int32_t>(rows, *id),
                           .parent = Get<std::int32_t>(rows, *parent),
                           .name = Get<std::string>(rows, *name),
                           .type = Get<std::int16_t>(rows, *type)});
    }
    return objects;
}

std::set<std::int32_t> ReadObjectsWithAccess(CheckRun& run, CheckedRows& rows) {
    std::set<std::int32_t> ids;
    const Column* id = FindTyped(run, rows, "ObjectId", ColumnType::kInt32);
    for (std::size_t i = 0; id != nullptr && i < rows.size(); ++i) {
        if (!rows[i].readable)
            continue;
        rows.Open(i);
        ids.insert(Get<std::int32_t>(rows, *id));
    }
    return ids;
}

void CheckObjects(CheckRun& run, const ObjectFacts& facts) {
    ObjectsCheck(run, facts).Check();
}

}  // namespace ledgix::jet
