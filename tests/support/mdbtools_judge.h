#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "variant.h"

// mdbtools, an independent reader of Access files, as a judge of what a database holds.
namespace ledgix::test {

// A row as our own reader sees it: column names with their values.
using NamedRow = std::vector<std::pair<std::string, runtime::Variant>>;

// Whether the programs mdb-tables and mdb-json can be run.
bool HaveMdbtools();

// All local tables that mdb-tables lists, system tables too if asked for.
std::vector<std::string> JudgeTables(const std::string& path, bool with_system_tables);

// The rows of a table as mdb-json prints them: one object a row, null fields left out.
std::vector<nlohmann::json> JudgeRows(const std::string& path, const std::string& table);

// Success when both give the same rows; mdb-json lists a moved row where it went to, so the order may differ. Values
// are compared, as exactly as mdb-json prints them; it does not tell an empty text from null.
testing::AssertionResult SameRows(const std::vector<nlohmann::json>& theirs, const std::vector<NamedRow>& ours);

}  // namespace ledgix::test
