#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "jet_format.h"
#include "table_definition.h"
#include "variant.h"

namespace ledgix::jet {

// Values by column name; columns that are not named are null.
using SystemRow = std::vector<std::pair<std::string_view, runtime::Variant>>;

// A table that every database has.
struct SystemTable {
    TableDefinition definition;   // with the page of the definition, without maps and index roots
    std::vector<SystemRow> rows;  // of a new database, in the order of their slots
};

// MSysObjects, MSysACEs, MSysQueries and MSysRelationships of a database without tables of the user. `created` is the
// date of all objects.
std::vector<SystemTable> MakeSystemTables(const Format& format, runtime::Date created);

}  // namespace ledgix::jet
