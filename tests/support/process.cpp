#include "process.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace ledgix::test {

std::string Output(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return output;
    std::array<char, 4096> buffer{};
    for (std::size_t count; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        output.append(buffer.data(), count);
    pclose(pipe);
    return output;
}

int ExitStatus(const std::string& command) {
    const int status = std::system((command + " >/dev/null 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace ledgix::test
