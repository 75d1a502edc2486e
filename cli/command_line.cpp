#include "command_line.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <map>
#include <ostream>
#include <sstream>
#include <string>

#include "command_messages.h"
#include "commands.h"
#include "database.h"
#include "files.h"
#include "layout_check.h"
#include "report_command.h"
#include "runtime_error.h"

namespace ledgix::cli {

namespace {

using runtime::RuntimeError;

struct Request {
    std::string database;  // empty: the file that the program itself would open
    std::string statement;
    std::string output;
    Format format = Format::kText;
    bool system = false;
    std::string new_file;
    dao::FileFormat new_format = dao::FileFormat::kJet4;
    ReportRequest report;
};

const std::map<std::string, Format> kListFormats{{"text", Format::kText}, {"json", Format::kJson}};
const std::map<std::string, Format> kTableFormats{
    {"text", Format::kText}, {"csv", Format::kCsv}, {"json", Format::kJson}};
const std::map<std::string, Format> kReportFormats{
    {"text", Format::kText}, {"csv", Format::kCsv}, {"json", Format::kJson}, {"pdf", Format::kPdf}};
const std::map<std::string, dao::FileFormat> kFileFormats{{"jet3", dao::FileFormat::kJet3},
                                                          {"jet4", dao::FileFormat::kJet4}};
const std::map<std::string, reports::ReportKind> kReports{
    {"profile", reports::kProfileReport}, {"analysis", reports::kAnalysisReport}, {"outlook", reports::kOutlookReport}};

void AddFormat(CLI::App& command, Format& format, const std::map<std::string, Format>& formats) {
    std::string names;
    for (const auto& [name, value] : formats)
        names += (names.empty() ? "" : ", ") + name;
    command.add_option("--format", format, "Form of the result: " + names + "; text if not given")
        ->transform(CLI::CheckedTransformer(formats))
        ->type_name("FORMAT")
        ->option_text("FORMAT");
}

void AddReport(CLI::App& app, Request& request) {
    CLI::App& command = *app.add_subcommand("report", "Print one of the three reports");
    ReportRequest& report = request.report;
    command.add_option("report", report.kind, "profile, analysis (first year of a purchase) or outlook (ten years)")
        ->required()
        ->transform(CLI::CheckedTransformer(kReports))
        ->type_name("REPORT")
        ->option_text("REPORT");
    command.add_option("--profile", report.profile, "Number or exact name of the profile")->required();
    command.add_option("--property", report.property, "Number or exact name of the property: for analysis and outlook");
    AddFormat(command, report.format, kReportFormats);
    command.add_option("--output", report.output, "File to write; standard output if not given")->type_name("FILE");
}

void AddCreate(CLI::App& app, Request& request) {
    CLI::App& command = *app.add_subcommand("create", "Make a new database file without any table");
    command.add_option("file", request.new_file, "The file to make; there must be none of that name")
        ->required()
        ->type_name("FILE");
    command
        .add_option("--format", request.new_format, "jet3 (Access 97) or jet4 (Access 2000 to 2003); jet4 if not given")
        ->transform(CLI::CheckedTransformer(kFileFormats))
        ->type_name("FORMAT")
        ->option_text("FORMAT");
}

void AddCommands(CLI::App& app, Request& request) {
    app.add_option("--database", request.database, "Database file; without it the one that the desktop opens")
        ->type_name("FILE");
    app.fallthrough();
    app.require_subcommand(1);
    app.set_version_flag("--version", "ledgix-cli " LEDGIX_VERSION);

    AddCreate(app, request);
    AddFormat(*app.add_subcommand("list", "List profiles and their properties"), request.format, kListFormats);
    AddReport(app, request);
    app.add_subcommand("export", "Write the whole content as JSON")
        ->add_option("--output", request.output, "File to write; standard output if not given")
        ->type_name("FILE");
    CLI::App& sql = *app.add_subcommand("sql", "Run a select statement");
    sql.add_option("statement", request.statement, "The statement")->required()->type_name("STATEMENT");
    AddFormat(sql, request.format, kTableFormats);
    CLI::App& info = *app.add_subcommand("info", "Describe the file: format, tables, columns, indexes, row counts");
    AddFormat(info, request.format, kListFormats);
    info.add_flag("--system", request.system, "Describe the system tables too");
}

// Opens the database; null when the program's own trap has already told the user why not.
dao::Database* OpenDatabase(const std::string& path) {
    store::gDatabase.reset();
    if (path.empty())
        store::StartADO();
    else
        store::OpenDatabaseFile(path);
    return store::gDatabase.get();
}

int RunCommand(const CLI::App& app, const Request& request, std::ostream& out, std::ostream& err) {
    if (app.got_subcommand("create")) {
        dao::CreateDatabase(request.new_file, request.new_format);
        return kDone;
    }
    dao::Database* database = OpenDatabase(request.database);
    if (!database)
        return kFileNotUsable;
    if (app.got_subcommand("report"))
        return RunReport(*database, request.report, out) ? kDone : kRuntimeError;
    if (app.got_subcommand("list")) {
        ListProfiles(*database, request.format, out);
    } else if (app.got_subcommand("sql")) {
        RunSql(*database, request.statement, request.format, out);
    } else if (app.got_subcommand("info")) {
        DescribeFile(*database, request.format, request.system, out);
    } else if (request.output.empty()) {
        ExportContent(*database, out, err);
    } else {
        std::ostringstream content;
        ExportContent(*database, content, err);
        runtime::WriteFile(request.output, content.view());
    }
    return kDone;
}

int RunTrapped(const CLI::App& app, const Request& request, std::ostream& out, std::ostream& err) {
    try {
        const int status = RunCommand(app, request, out, err);
        out.flush();
        if (!out) {
            err << "ledgix-cli: the result cannot be written\n";
            return kRuntimeError;
        }
        return status;
    } catch (const RuntimeError& error) {
        err << "ledgix-cli: " << error.what() << "\n";
        return IsFileError(error.number()) ? kFileNotUsable : kRuntimeError;
    } catch (const NotUpgraded& error) {
        err << "ledgix-cli: " << error.what() << "\n";
        return kFileNotUsable;
    } catch (const std::exception& error) {
        err << "ledgix-cli: " << error.what() << "\n";
        return kRuntimeError;
    }
}

// What the parser cannot see: a property belongs to the reports of a property.
void CheckReport(const CLI::App& app, const ReportRequest& report) {
    if (!app.got_subcommand("report"))
        return;
    const bool of_property = report.kind != reports::kProfileReport;
    if (of_property && report.property.empty())
        throw CLI::RequiredError("--property");
    if (!of_property && !report.property.empty())
        throw CLI::ValidationError("--property", "is for the reports of a property");
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    CLI::App app("Vantreo Ledgix: profiles, property purchases and their reports, without a window.", "ledgix-cli");
    Request request;
    AddCommands(app, request);
    try {
        app.parse(argc, argv);
        CheckReport(app, request.report);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, out, err) == 0 ? kDone : kUsageError;
    }
    const CommandMessages messages(err);
    const int status = RunTrapped(app, request, out, err);
    return messages.FileErrorSeen() ? kFileNotUsable : status;
}

}  // namespace ledgix::cli
