#pragma once

#include <string>

// Other programs, run by the shell.
namespace ledgix::test {

// What a command prints to standard output, whether it succeeds or not.
std::string Output(const std::string& command);

// The same; throws std::runtime_error when the command fails.
std::string OutputOfSuccess(const std::string& command);

// The exit status of a command, whose output goes nowhere.
int ExitStatus(const std::string& command);

}  // namespace ledgix::test
