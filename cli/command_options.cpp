#include "command_options.h"

#include <CLI/CLI.hpp>
#include <map>

namespace ledgix::cli {

namespace {

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

void AddFile(CLI::App& command, std::string& file, const std::string& description) {
    command.add_option("file", file, description)->required()->type_name("FILE");
}

void AddOutput(CLI::App& command, std::string& output) {
    command.add_option("--output", output, "File to write; standard output if not given")->type_name("FILE");
}

void AddReport(CLI::App& app, ReportRequest& report) {
    CLI::App& command = *app.add_subcommand("report", "Print one of the three reports");
    command.add_option("report", report.kind, "profile, analysis (first year of a purchase) or outlook (ten years)")
        ->required()
        ->transform(CLI::CheckedTransformer(kReports))
        ->type_name("REPORT")
        ->option_text("REPORT");
    command.add_option("--profile", report.profile, "Number or exact name of the profile")->required();
    command.add_option("--property", report.property, "Number or exact name of the property: for analysis and outlook");
    AddFormat(command, report.format, kReportFormats);
    AddOutput(command, report.output);
}

void AddCreate(CLI::App& app, Request& request) {
    CLI::App& command = *app.add_subcommand("create", "Make a new database file without any table");
    AddFile(command, request.file, "The file to make; there must be none of that name");
    command
        .add_option("--format", request.new_format, "jet3 (Access 97) or jet4 (Access 2000 to 2003); jet4 if not given")
        ->transform(CLI::CheckedTransformer(kFileFormats))
        ->type_name("FORMAT")
        ->option_text("FORMAT");
}

// Commands that read and write the records of the household.
void AddRecordCommands(CLI::App& app, Request& request) {
    AddFormat(*app.add_subcommand("list", "List profiles and their properties"), request.format, kListFormats);
    AddReport(app, request.report);
    AddOutput(*app.add_subcommand("export", "Write the whole content as JSON"), request.output);
    AddFile(*app.add_subcommand("import", "Add the content of a JSON file, as export writes it: all of it or nothing"),
            request.file, "The JSON file");
    CLI::App& sql = *app.add_subcommand("sql", "Run a select, insert, update or delete statement");
    sql.add_option("statement", request.statement, "The statement")->required()->type_name("STATEMENT");
    AddFormat(sql, request.format, kTableFormats);
}

// Commands on the file as a whole.
void AddFileCommands(CLI::App& app, Request& request) {
    AddCreate(app, request);
    app.add_subcommand("upgrade", "Bring the file up to the current layout");
    CLI::App& info = *app.add_subcommand("info", "Describe the file: format, tables, columns, indexes, row counts");
    AddFormat(info, request.format, kListFormats);
    info.add_flag("--system", request.system, "Describe the system tables too");
    CLI::App& check = *app.add_subcommand("check", "Check the structure of the file");
    AddFormat(check, request.format, kListFormats);
    check.add_flag("--strict", request.strict, "Name also what other writers do now and then without harm");
    AddFile(*app.add_subcommand("compact", "Copy the tables into a new file without unused space"), request.file,
            "The file to make; there must be none of that name");
}

}  // namespace

void AddCommands(CLI::App& app, Request& request) {
    app.add_option("--database", request.database, "Database file; without it the one that the desktop opens")
        ->type_name("FILE");
    app.fallthrough();
    app.require_subcommand(1);
    app.set_version_flag("--version", "ledgix-cli " LEDGIX_VERSION);
    AddRecordCommands(app, request);
    AddFileCommands(app, request);
}

void CheckRequest(const CLI::App& app, const Request& request) {
    if (!app.got_subcommand("report"))
        return;
    const bool of_property = request.report.kind != reports::kProfileReport;
    if (of_property && request.report.property.empty())
        throw CLI::RequiredError("--property");
    if (!of_property && !request.report.property.empty())
        throw CLI::ValidationError("--property", "is for the reports of a property");
}

}  // namespace ledgix::cli
