#pragma once

#include <iosfwd>
#include <string>

#include "dao_database.h"

// The commands of ledgix-cli. Most work on an open database. Each writes its result to `out` and raises what goes
// wrong: RuntimeError of any number, NotUpgraded for a file of an older layout.
namespace ledgix::cli {

class CommandMessages;

enum class Format { kText, kCsv, kJson, kPdf };

void ListProfiles(dao::Database& database, Format format, std::ostream& out);

// The whole content of the product's tables as JSON. Rows of ProfileProperty without a profile are left out, which is
// said on `err`.
void ExportContent(dao::Database& database, std::ostream& out, std::ostream& err);

// Runs a select statement and prints its rows, or an insert, update or delete statement and prints how many rows it
// changed.
void RunSql(dao::Database& database, const std::string& statement, Format format, std::ostream& out);

// With `system`, the tables that the file format keeps for itself are described too.
void DescribeFile(dao::Database& database, Format format, bool system, std::ostream& out);

// Brings the file up to the current layout and prints what was added. `database` is the open one of the record
// routines. False when something is still missing, which is said on `err`, or when the upgrade itself said that it
// failed.
bool UpgradeLayout(dao::Database& database, const CommandMessages& messages, std::ostream& out, std::ostream& err);

// Adds the profiles, properties and tax brackets of a file in the shape of ExportContent: all or, when anything fails,
// none. Raises RequestRefused too, for a file with faults and for numbers that the database holds already.
void ImportContent(dao::Database& database, const std::string& path, const CommandMessages& messages,
                   std::ostream& out);

// Makes a file with the content of the one at `path`, and says on `err` what was left behind.
void CompactFile(const std::string& path, const std::string& output, std::ostream& out, std::ostream& err);

}  // namespace ledgix::cli
