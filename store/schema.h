#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dao_constants.h"
#include "dao_database.h"

// The current layout of property.mdb.
namespace ledgix::store {

struct SchemaColumn {
    std::string_view name;
    dao::FieldType type;
    int size;                       // of a text, in characters
    std::string_view fill_default;  // SQL text of the value that existing rows get when the column is added
};

struct SchemaTable {
    std::string_view name;
    std::span<const SchemaColumn> columns;          // in the order of a new file
    std::span<const std::string_view> primary_key;  // empty: none
};

const SchemaTable& ProfilesTable();
const SchemaTable& ProfilePropertyTable();
const SchemaTable& TaxRatesTable();

// What the file lacks of a table: "table Tax_Rates", or "column Profiles.IncDividends" for each missing column.
std::vector<std::string> MissingFrom(dao::Database& database, const SchemaTable& table);

}  // namespace ledgix::store
