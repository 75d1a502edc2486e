#pragma once

#include <iosfwd>
#include <string>

#include "dao_database.h"

// The commands of ledgix-cli. Each works on an open database, writes its result to `out`, and raises what goes wrong:
// RuntimeError of any number, NotUpgraded for a file of an older layout.
namespace ledgix::cli {

enum class Format { kText, kCsv, kJson, kPdf };

void ListProfiles(dao::Database& database, Format format, std::ostream& out);

// The whole content of the product's tables as JSON. Rows of ProfileProperty without a profile are left out, which is
// said on `err`.
void ExportContent(dao::Database& database, std::ostream& out, std::ostream& err);

void RunSql(dao::Database& database, const std::string& statement, Format format, std::ostream& out);

// With `system`, the tables that the file format keeps for itself are described too.
void DescribeFile(dao::Database& database, Format format, bool system, std::ostream& out);

}  // namespace ledgix::cli
