#include "process.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace ledgix::test {

namespace {

#ifdef _WIN32
FILE* OpenPipe(const std::string& command) {
    return _popen(command.c_str(), "r");
}
int ClosePipe(FILE* pipe) {
    return _pclose(pipe);
}
int StatusOf(int result) {
    return result;
}
#else
FILE* OpenPipe(const std::string& command) {
    return popen(command.c_str(), "r");
}
int ClosePipe(FILE* pipe) {
    return pclose(pipe);
}
int StatusOf(int result) {
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
}
#endif

struct Finished {
    std::string output;
    int status = 0;
};

Finished Run(const std::string& command) {
    FILE* pipe = OpenPipe(command);
    if (pipe == nullptr)
        throw std::runtime_error("cannot run " + command);
    Finished finished;
    std::array<char, 65536> buffer;
    for (std::size_t got; (got = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        finished.output.append(buffer.data(), got);
    finished.status = StatusOf(ClosePipe(pipe));
    return finished;
}

}  // namespace

std::string Output(const std::string& command) {
    return Run(command).output;
}

std::string OutputOfSuccess(const std::string& command) {
    Finished finished = Run(command);
    if (finished.status != 0)
        throw std::runtime_error(command + " failed");
    return std::move(finished.output);
}

int ExitStatus(const std::string& command) {
    return StatusOf(std::system((command + " >/dev/null 2>&1").c_str()));
}

}  // namespace ledgix::test
