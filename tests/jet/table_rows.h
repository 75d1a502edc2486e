#pragma once

#include <string>
#include <vector>

#include "database_file.h"
#include "mdbtools_judge.h"

namespace ledgix::test {

// All rows of a table in scan order.
std::vector<NamedRow> ReadRows(jet::DatabaseFile& file, const jet::TableDefinition& table);

// The same for the table with this name, which must exist.
std::vector<NamedRow> ReadRows(jet::DatabaseFile& file, const std::string& table);

// Paths of the sample databases.
std::vector<std::string> SampleFiles();

// A path's last part, as a test name.
std::string FileTestName(const testing::TestParamInfo<std::string>& info);

}  // namespace ledgix::test
