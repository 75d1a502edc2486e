#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ledgix::bench {

// Wall-clock times of one action, in milliseconds.
struct Times {
    double median = 0;
    double fastest = 0;
};

// Our action and its peer.
struct Comparison {
    Times ours;
    Times peer;
};

using Action = std::function<void()>;
using Command = std::vector<std::string>;

// The run of a whole process whose output goes nowhere. Ends the program when it cannot be run or fails.
Action Process(const Command& command);

// Runs both in turns, so that whatever else the machine does falls on both alike. The first runs of each are not
// counted.
Comparison RunSideBySide(const Action& ours, const Action& peer, int rounds, int warm_up_rounds);

// Prints the times of both and their ratio.
void Print(const std::string& our_name, const std::string& peer_name, const Comparison& comparison);

}  // namespace ledgix::bench
