#include "side_by_side.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

extern char** environ;

namespace ledgix::bench {

namespace {

constexpr int kWarmUpRuns = 5;

double RunOnce(const Command& command) {
    std::vector<char*> argv;
    for (const std::string& word : command)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 0;
    const bool started = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    if (!started || waitpid(child, &status, 0) != child || status != 0) {
        std::fprintf(stderr, "cannot run %s\n", argv[0]);
        std::exit(1);
    }
    const auto end = std::chrono::steady_clock::now();
    posix_spawn_file_actions_destroy(&actions);
    return std::chrono::duration<double, std::milli>(end - start).count();
}

Times Summary(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.front()};
}

}  // namespace

Comparison RunSideBySide(const Command& ours, const Command& peer, int rounds) {
    for (int run = 0; run < kWarmUpRuns; ++run) {
        RunOnce(ours);
        RunOnce(peer);
    }
    std::vector<double> our_times;
    std::vector<double> peer_times;
    for (int round = 0; round < rounds; ++round) {
        our_times.push_back(RunOnce(ours));
        peer_times.push_back(RunOnce(peer));
    }
    return {Summary(our_times), Summary(peer_times)};
}

}  // namespace ledgix::bench
