#include "child_process.h"

#include <stdexcept>

#ifdef _WIN32

namespace ledgix::test {

// Ending a process at any moment is tried out where there are signals.
ChildProcess::ChildProcess(const std::vector<std::string>&) {
    throw std::runtime_error("no child processes here");
}
ChildProcess::~ChildProcess() = default;
std::optional<std::string> ChildProcess::ReadLine() {
    return {};
}
void ChildProcess::Kill() {}
int ChildProcess::Wait() {
    return status_;
}

}  // namespace ledgix::test

#else

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

extern char** environ;

namespace ledgix::test {

ChildProcess::ChildProcess(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    output_ = ends[0];
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    std::string program = LEDGIX_DURABILITY_PROGRAM;
    std::vector<std::string> kept = arguments;
    std::vector<char*> words{program.data()};
    for (std::string& argument : kept)
        words.push_back(argument.data());
    words.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int error = posix_spawn(&process_, program.c_str(), &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error != 0) {
        process_ = 0;
        close(output_);
        throw std::runtime_error("cannot run " + program);
    }
}

ChildProcess::~ChildProcess() {
    Kill();
    close(output_);
}

std::optional<std::string> ChildProcess::ReadLine() {
    for (;;) {
        const std::size_t end = read_.find('\n');
        if (end != std::string::npos) {
            const std::string line = read_.substr(0, end);
            read_.erase(0, end + 1);
            return line;
        }
        std::array<char, 4096> buffer;
        const ssize_t got = read(output_, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return {};
        read_.append(buffer.data(), static_cast<std::size_t>(got));
    }
}

void ChildProcess::Kill() {
    if (process_ != 0)
        kill(process_, SIGKILL);
    Wait();
}

int ChildProcess::Wait() {
    if (process_ == 0)
        return status_;
    int how = 0;
    while (waitpid(process_, &how, 0) < 0 && errno == EINTR) {
    }
    status_ = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    process_ = 0;
    return status_;
}

}  // namespace ledgix::test

#endif
