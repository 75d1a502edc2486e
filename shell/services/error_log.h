#pragma once

#include <string>
#include <string_view>

#include "runtime_error.h"

// How errors of the data layer are shown and recorded.
namespace ledgix::services {

// Shows a trapped error in a message box and appends it to the month's log. An error whose source is the database
// engine, and one of number 0, has an empty box and an entry without text; the engine's "number - description" goes to
// the diagnostics instead. `label`, the routine's, appears nowhere.
void DatabaseErrorHandler(const std::string& label, const runtime::RuntimeError& error);

// Appends date, time and `message` to "err" + month + ".log" in the application folder. A failure is ignored.
void WriteErrorLog(const std::string& message);

// Takes the diagnosis of an engine error, which no message box shows.
class Diagnostics {
public:
    virtual ~Diagnostics() = default;
    virtual void Write(std::string_view diagnosis) = 0;
};

// Makes `diagnostics` take what comes from now on; nullptr brings back standard error. The caller keeps it.
void InstallDiagnostics(Diagnostics* diagnostics);

}  // namespace ledgix::services
