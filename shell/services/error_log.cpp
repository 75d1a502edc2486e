#include "error_log.h"

#include <iostream>

#include "application_folder.h"
#include "clock.h"
#include "date_time.h"
#include "files.h"
#include "message_box.h"
#include "regional_settings.h"
#include "text.h"

namespace ledgix::services {

namespace {

class StandardErrorDiagnostics : public Diagnostics {
public:
    void Write(std::string_view diagnosis) override { std::cerr << diagnosis << std::endl; }
};

StandardErrorDiagnostics standard_error;
Diagnostics* installed = &standard_error;

bool IsEngineError(const runtime::RuntimeError& error) {
    return error.source() == runtime::kEngineSource;
}

std::string MessageOf(const runtime::RuntimeError& error) {
    if (error.number() == 0 || IsEngineError(error))
        return {};
    const std::string blank_line = std::string(runtime::kLineBreak) + std::string(runtime::kLineBreak);
    return "General Errors..." + blank_line + error.what() + blank_line;
}

}  // namespace

void InstallDiagnostics(Diagnostics* diagnostics) {
    installed = diagnostics ? diagnostics : &standard_error;
}

void DatabaseErrorHandler(const std::string& /*label*/, const runtime::RuntimeError& error) {
    const std::string message = MessageOf(error);
    if (error.number() != 0 && IsEngineError(error))
        installed->Write(error.what());
    runtime::MsgBox(message);
    WriteErrorLog(message);
}

void WriteErrorLog(const std::string& message) {
    const runtime::CivilTime now = runtime::SystemTime().Now();
    const runtime::MonthNames& months = runtime::Region().month_abbreviations;
    const std::string file = "err" + runtime::FormatDate(now, "MMMYY", months) + ".log";
    const std::string time = runtime::FormatDate(now, "DD/MM/YY hh:nn:ss", months);
    try {
        runtime::AppendFile(runtime::ApplicationFile(file), time + " " + message + std::string(runtime::kLineBreak));
    } catch (const runtime::RuntimeError&) {
        // The entry is lost: there is nowhere left to report to.
    }
}

}  // namespace ledgix::services
