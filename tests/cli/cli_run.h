#pragma once

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "command_line.h"

namespace ledgix::test {

// What a command printed, and its exit status.
struct CommandResult {
    int status = 0;
    std::string out;
    std::string err;
};

// Runs ledgix-cli in this process.
inline CommandResult RunCli(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv{"ledgix-cli"};
    for (const std::string& argument : arguments)
        argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream err;
    const int status = cli::RunCommandLine(static_cast<int>(argv.size()), argv.data(), out, err);
    return {status, out.str(), err.str()};
}

// The same on one of the sample files.
inline CommandResult RunOn(const std::string& file, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--database", LEDGIX_TEST_DATA "/mdb/" + file});
    return RunCli(arguments);
}

}  // namespace ledgix::test
