#pragma once

/// Times work against a peer, in turns, so that a noisy machine is noisy for both.

#include <functional>
#include <string>
#include <vector>

namespace pictavo::bench {

/// Does something once, and returns the seconds that it took.
using TimedRun = std::function<double()>;

/// The time of all that `work` does.
TimedRun Clocked(std::function<void()> work);

struct Comparison {
    double work = 0;   ///< median seconds
    double peer = 0;   ///< median seconds
    double ratio = 0;  ///< median of work : peer in each round, as a disk may be slow in some rounds
};

/// Runs work and peer in turns, `rounds` times after one round that does not count.
Comparison Compare(int rounds, const TimedRun& work, const TimedRun& peer);

/// Runs a program with its output thrown away and returns its peak memory in KiB. Ends the benchmark when it
/// fails.
long RunProgram(const std::vector<std::string>& arguments);

/// Runs a program, and returns the numbers that it prints. Ends the benchmark when it fails.
std::vector<double> NumbersOf(const std::vector<std::string>& arguments);

/// Prints one line: what, both times, the ratio, the bound, and whether it holds.
bool Print(const std::string& what, const Comparison& comparison, double bound);

}  // namespace pictavo::bench
