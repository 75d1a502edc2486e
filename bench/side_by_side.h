#pragma once

#include <string>
#include <vector>

namespace ledgix::bench {

// Wall-clock times of one command, in milliseconds.
struct Times {
    double median = 0;
    double fastest = 0;
};

// Our command and its peer.
struct Comparison {
    Times ours;
    Times peer;
};

using Command = std::vector<std::string>;

// Runs both commands in turns, so that whatever else the machine does falls on both alike; output goes nowhere.
// The first runs of each are not counted. Ends the program when a command cannot be run or fails.
Comparison RunSideBySide(const Command& ours, const Command& peer, int rounds);

}  // namespace ledgix::bench
