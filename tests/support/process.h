#pragma once

#include <string>

namespace ledgix::test {

// What a shell command prints to standard output.
std::string Output(const std::string& command);

// The exit status of a shell command, whose output goes nowhere.
int ExitStatus(const std::string& command);

}  // namespace ledgix::test
