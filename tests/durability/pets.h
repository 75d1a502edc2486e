#pragma once

#include <map>
#include <string>

#include "database_file.h"
#include "jet_types.h"

namespace ledgix::test {

// What a table "Pet" holds: a number, which is its primary key, and a text.
using Pets = std::map<int, std::string>;

// A new database of a generation with the table, which is empty.
std::vector<std::uint8_t> PetDatabase(jet::Generation generation);

// Changes the table to hold these, in one transaction.
void StorePets(jet::DatabaseFile& file, const Pets& before, const Pets& after);

// What it holds; by walking the rows, and again by the index, which must agree.
Pets LoadPets(jet::DatabaseFile& file);

// What the structural check finds, one finding a line; empty for a sound file.
std::string Findings(jet::DatabaseFile& file);

}  // namespace ledgix::test
