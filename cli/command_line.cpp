#include "command_line.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <ostream>
#include <sstream>
#include <string>

#include "check_command.h"
#include "command_messages.h"
#include "command_options.h"
#include "database.h"
#include "files.h"
#include "layout_check.h"
#include "runtime_error.h"

namespace ledgix::cli {

namespace {

using runtime::RuntimeError;

// Opens the database; null when the program's own trap has already told the user why not.
dao::Database* OpenDatabase(const std::string& path) {
    store::gDatabase.reset();
    if (path.empty())
        store::StartADO();
    else
        store::OpenDatabaseFile(path);
    return store::gDatabase.get();
}

void Export(dao::Database& database, const std::string& output, std::ostream& out, std::ostream& err) {
    if (output.empty())
        return ExportContent(database, out, err);
    std::ostringstream content;
    ExportContent(database, content, err);
    runtime::WriteFile(output, content.view());
}

// Commands on the records, or on the tables. False when the command has failed and said why, here and below.
bool RunOnDatabase(const std::string& command, const Request& request, dao::Database& database,
                   const CommandMessages& messages, std::ostream& out, std::ostream& err) {
    if (command == "report")
        return RunReport(database, request.report, out);
    if (command == "upgrade")
        return UpgradeLayout(database, messages, out, err);
    if (command == "list")
        ListProfiles(database, request.format, out);
    else if (command == "export")
        Export(database, request.output, out, err);
    else if (command == "import")
        ImportContent(database, request.file, messages, out);
    else if (command == "sql")
        RunSql(database, request.statement, request.format, out);
    else
        DescribeFile(database, request.format, request.system, out);
    return true;
}

// Commands on the pages of a file.
bool RunOnFile(const std::string& command, const Request& request, const std::string& path, std::ostream& out,
               std::ostream& err) {
    if (command == "check")
        return CheckFile(path, request.strict, request.format, out);
    CompactFile(path, request.file, out, err);
    return true;
}

int RunCommand(const std::string& command, const Request& request, const CommandMessages& messages, std::ostream& out,
               std::ostream& err) {
    if (command == "create") {
        dao::CreateDatabase(request.file, request.new_format);
        return kDone;
    }
    dao::Database* database = OpenDatabase(request.database);
    if (!database)
        return kFileNotUsable;
    bool done = false;
    if (command == "check" || command == "compact") {
        const std::string path = database->path();
        store::gDatabase.reset();
        done = RunOnFile(command, request, path, out, err);
    } else {
        done = RunOnDatabase(command, request, *database, messages, out, err);
    }
    return done ? kDone : kRuntimeError;
}

int RunTrapped(const std::string& command, const Request& request, const CommandMessages& messages, std::ostream& out,
               std::ostream& err) {
    try {
        const int status = RunCommand(command, request, messages, out, err);
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

}  // namespace

int RunCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    CLI::App app("Vantreo Ledgix: profiles, property purchases and their reports, without a window.", "ledgix-cli");
    Request request;
    AddCommands(app, request);
    try {
        app.parse(argc, argv);
        CheckRequest(app, request);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, out, err) == 0 ? kDone : kUsageError;
    }
    const CommandMessages messages(err);
    const int status = RunTrapped(app.get_subcommands().front()->get_name(), request, messages, out, err);
    return messages.FileErrorSeen() ? kFileNotUsable : status;
}

}  // namespace ledgix::cli
