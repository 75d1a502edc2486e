#pragma once

#include <iosfwd>

namespace ledgix::cli {

// Exit statuses of ledgix-cli.
enum ExitStatus : int {
    kDone = 0,
    kRuntimeError = 1,
    kUsageError = 2,
    kFileNotUsable = 3,
};

// Runs one command of ledgix-cli: results go to `out`, messages to `err`. Never throws. Gives the exit status.
int RunCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace ledgix::cli
