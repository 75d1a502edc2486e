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

void RunProcess(const Command& command) {
    std::vector<char*> argv;
    for (const std::string& word : command)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 0;
    const bool started = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    if (!started || waitpid(child, &status, 0) != child || status != 0) {
        std::fprintf(stderr, "cannot run %s\n", argv[0]);
        std::exit(1);
    }
    posix_spawn_file_actions_destroy(&actions);
}

double Time(const Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void PrintTimes(const std::string& name, const Times& times) {
    std::printf("%-48s median %9.3f ms   fastest %9.3f ms\n", name.c_str(), times.median, times.fastest);
}

Times Summary(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.front()};
}

}  // namespace

Action Process(const Command& command) {
    return [command] { RunProcess(command); };
}

Comparison RunSideBySide(const Action& ours, const Action& peer, int rounds, int warm_up_rounds) {
    for (int run = 0; run < warm_up_rounds; ++run) {
        ours();
        peer();
    }
    std::vector<double> our_times;
    std::vector<double> peer_times;
    for (int round = 0; round < rounds; ++round) {
        our_times.push_back(Time(ours));
        peer_times.push_back(Time(peer));
    }
    return {Summary(our_times), Summary(peer_times)};
}

void Print(const std::string& our_name, const std::string& peer_name, const Comparison& comparison) {
    PrintTimes(our_name, comparison.ours);
    PrintTimes(peer_name, comparison.peer);
    std::printf("%-48s median %9.2f      fastest %9.2f\n\n", "ratio", comparison.ours.median / comparison.peer.median,
                comparison.ours.fastest / comparison.peer.fastest);
    std::fflush(stdout);
}

}  // namespace ledgix::bench
