#include <cstdio>

#include "side_by_side.h"

namespace {

using ledgix::bench::Command;
using ledgix::bench::Comparison;

constexpr int kRounds = 300;

void Compare(const char* what, const Command& ours, const char* peer_name, const Command& peer) {
    const Comparison result = ledgix::bench::RunSideBySide(ours, peer, kRounds);
    std::printf("%-44s median %7.3f ms   fastest %7.3f ms\n", what, result.ours.median, result.ours.fastest);
    std::printf("%-44s median %7.3f ms   fastest %7.3f ms\n", peer_name, result.peer.median, result.peer.fastest);
    std::printf("%-44s median %7.2f      fastest %7.2f\n\n", "ratio", result.ours.median / result.peer.median,
                result.ours.fastest / result.peer.fastest);
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
