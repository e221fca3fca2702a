#include "Timing.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

namespace pictavo::bench {

namespace {

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

TimedRun Clocked(std::function<void()> work) {
    return [work = std::move(work)] {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
}

Comparison Compare(int rounds, const TimedRun& work, const TimedRun& peer) {
    std::vector<double> works;
    std::vector<double> peers;
    std::vector<double> ratios;
    work();
    peer();
    for (int round = 0; round < rounds; ++round) {
        works.push_back(work());
        peers.push_back(peer());
        ratios.push_back(works.back() / peers.back());
    }
    return {Median(works), Median(peers), Median(ratios)};
}

long RunProgram(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = posix_spawnp(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (spawned == 0 && wait4(child, &status, 0, &usage) == child && status == 0) return usage.ru_maxrss;
    std::fprintf(stderr, "%s failed\n", pointers[0]);
    std::exit(1);
}

std::vector<double> NumbersOf(const std::vector<std::string>& arguments) {
    std::string command;
    for (const std::string& argument : arguments) command += "'" + argument + "' ";
    FILE* pipe = popen(command.c_str(), "r");
    std::vector<double> numbers;
    for (double number = 0; pipe != nullptr && std::fscanf(pipe, "%lf", &number) == 1;)
        numbers.push_back(number);
    if (pipe != nullptr && pclose(pipe) == 0 && !numbers.empty()) return numbers;
    std::fprintf(stderr, "%s failed\n", command.c_str());
    std::exit(1);
}

bool Print(const std::string& what, const Comparison& comparison, double bound) {
    const bool holds = comparison.ratio <= bound;
    std::printf("%-58s %9.2f ms %9.2f ms   ratio %6.2f  bound %6.2f  %s\n", what.c_str(),
                comparison.work * 1e3, comparison.peer * 1e3, comparison.ratio, bound,
                holds ? "holds" : "MISSED");
    std::fflush(stdout);
    return holds;
}

}  // namespace pictavo::bench
