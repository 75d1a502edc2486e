#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Brings property.mdb up to the current layout.
namespace ledgix::store {

// Fills the table of tax brackets when it is empty. The model gives it, since the store knows no brackets.
using SeedTaxRates = std::function<void()>;

// Creates each missing table, adds each missing column with its default in every row, and creates missing primary keys.
// A step that fails is undone and keeps no other from being tried. All steps together are one change of the file, which
// is not written at all when nothing is missing. Then calls `seed`, and when a step has failed, says so in a message
// box. Raises nothing.
void UpgradeSchema(const SeedTaxRates& seed);

// The steps. Each works on gDatabase, traps its errors and is true on success; what is there already is a success.

// Makes a table of one column. Without `insert_row` the default goes into the rows that there are, else into a new one.
bool CreateTable(std::string_view table, std::string_view column, std::string_view fill_default, std::int16_t type,
                 std::int16_t size, std::int16_t insert_row);

// Adds a column and puts the default into it in every row.
bool AddColumn(std::string_view table, std::string_view column, std::string_view fill_default, std::int16_t type,
               std::int16_t size);

// Makes a primary key. Empty columns are left out.
bool CreateIndex(std::string_view table, std::string_view index, std::string_view column1, std::string_view column2,
                 std::string_view column3);

}  // namespace ledgix::store
