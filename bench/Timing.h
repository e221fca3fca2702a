#pragma once

/// Times work against a peer, in turns, so that a noisy machine is noisy for both.

#include <functional>
#include <string>
#include <vector>

namespace pictavo::bench {

struct Comparison {
    double work = 0;  ///< median seconds
    double peer = 0;  ///< median seconds
    double Ratio() const { return work / peer; }
};

/// Something to time, and what must be done before it without being timed (may be empty).
struct Timed {
    std::function<void()> before;
    std::function<void()> work;
};

/// Runs work and peer in turns, `rounds` times after one round that does not count.
Comparison Compare(int rounds, const Timed& work, const Timed& peer);

/// Runs a program with its output thrown away and returns its peak memory in KiB. Ends the benchmark when it
/// fails.
long RunProgram(const std::vector<std::string>& arguments);

/// Runs a program, and returns the numbers that it prints. Ends the benchmark when it fails.
std::vector<double> NumbersOf(const std::vector<std::string>& arguments);

/// Prints one line: what, both times, the ratio, the bound, and whether it holds.
bool Print(const std::string& what, const Comparison& comparison, double bound);

}  // namespace pictavo::bench
