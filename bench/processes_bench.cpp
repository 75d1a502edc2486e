#include <cstdio>

#include "side_by_side.h"

namespace {

using ledgix::bench::Command;

constexpr int kRounds = 300;
constexpr int kWarmUpRounds = 5;

void Compare(const std::string& what, const Command& ours, const std::string& peer_name, const Command& peer) {
    using namespace ledgix::bench;
    Print(what, peer_name, RunSideBySide(Process(ours), Process(peer), kRounds, kWarmUpRounds));
}

Command Report(const char* kind) {
    Command command{LEDGIX_CLI, "--database", LEDGIX_HOUSEHOLD, "report", kind, "--profile", "1", "--format", "json"};
    if (std::string(kind) != "profile")
        command.insert(command.end(), {"--property", "1"});
    return command;
}

}  // namespace

int main() {
    const Command peer{"mdb-export", LEDGIX_HOUSEHOLD, "Profiles"};
    Compare("ledgix-cli report profile --format json", Report("profile"), "mdb-export Profiles", peer);
    Compare("ledgix-cli report analysis --format json", Report("analysis"), "mdb-export Profiles", peer);
    Compare("ledgix-cli report outlook --format json", Report("outlook"), "mdb-export Profiles", peer);
    return 0;
}
