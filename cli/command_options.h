#pragma once

#include <string>

#include "commands.h"
#include "report_command.h"
#include "workspace.h"

namespace CLI {
class App;
}

namespace ledgix::cli {

// What the command line asks for.
struct Request {
    std::string database;  // empty: the file that the program itself would open
    std::string file;      // that a command is about, besides the database
    std::string output;    // empty: the output stream
    std::string statement;
    Format format = Format::kText;
    dao::FileFormat new_format = dao::FileFormat::kJet4;
    bool system = false;
    bool strict = false;
    ReportRequest report;
};

// Declares every command; parsing fills `request`, which must outlive `app`.
void AddCommands(CLI::App& app, Request& request);

// What the parser cannot see. Raises CLI::ParseError.
void CheckRequest(const CLI::App& app, const Request& request);

}  // namespace ledgix::cli
