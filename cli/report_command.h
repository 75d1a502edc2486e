#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "cls_report.h"
#include "commands.h"
#include "dao_database.h"

namespace ledgix::cli {

struct ReportRequest {
    reports::ReportKind kind = reports::kProfileReport;
    std::string profile;   // number or exact name
    std::string property;  // number or exact name; of property reports
    Format format = Format::kText;
    std::string output;  // file; empty: the output stream
};

// Lays one report out and writes it. `database` is the open one of the record routines. False when the report failed;
// the program's own traps have said why then.
bool RunReport(dao::Database& database, const ReportRequest& request, std::ostream& out);

// The name of a report on the command line and in JSON: "profile", "analysis" or "outlook".
std::string ReportName(reports::ReportKind kind);

}  // namespace ledgix::cli
