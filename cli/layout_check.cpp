#include "layout_check.h"

namespace ledgix::cli {

void RequireLayout(dao::Database& database, std::initializer_list<const store::SchemaTable*> tables) {
    std::string missing;
    for (const store::SchemaTable* table : tables)
        for (const std::string& item : store::MissingFrom(database, *table))
            missing += "\n  missing: " + item;
    if (!missing.empty())
        throw NotUpgraded("The file is of an older layout and needs an upgrade: " + database.path() + missing);
}

}  // namespace ledgix::cli
