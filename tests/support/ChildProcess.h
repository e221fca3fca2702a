#pragma once

/// Runs a program and gathers all that it says.

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/TempFolder.h"

namespace pictavo::tests {

struct Ended {
    int status = -1;  ///< exit status; negative when a signal ended the program
    std::string out;
    std::string err;
};

/// What a child gets beside its arguments.
struct Surroundings {
    std::filesystem::path folder;  ///< current folder; empty for the test's own
    std::vector<std::string> environment{
        "PATH=/usr/bin:/bin"};       ///< all of it: no display, no toolkit settings
    std::filesystem::path outputTo;  ///< standard output goes to this instead
};

namespace child_process {

inline std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

inline void Redirect(int handle, const std::filesystem::path& path, int flags) {
    const int opened = open(path.c_str(), flags, 0600);
    if (opened < 0 || dup2(opened, handle) < 0) _exit(126);
}

/// Where a program that is built to count the lines that it runs through leaves the counts.
inline void PassPlaceOfCounts(std::vector<std::string>& environment) {
    for (const std::string name : {"GCOV_PREFIX", "GCOV_ERROR_FILE"})
        if (const char* value = std::getenv(name.c_str())) environment.push_back(name + "=" + value);
}

[[noreturn]] inline void Become(std::vector<std::string> command, Surroundings around,
                                const std::filesystem::path& out, const std::filesystem::path& err) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXFSZ})
        std::signal(signal, SIG_DFL);  // whoever runs the tests
    Redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    Redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT);
    Redirect(STDERR_FILENO, err, O_WRONLY | O_CREAT);
    PassPlaceOfCounts(around.environment);
    if (!around.folder.empty() && chdir(around.folder.c_str()) != 0) _exit(126);
    execve(command[0].c_str(), Pointers(command).data(), Pointers(around.environment).data());
    _exit(127);
}

}  // namespace child_process

/// `command` is the program's path and its arguments, byte for byte.
inline Ended RunProgram(const std::vector<std::string>& command, const Surroundings& around = {}) {
    const TempFolder scratch;
    const bool isKept = around.outputTo.empty();
    const std::filesystem::path out = isKept ? scratch / "out" : around.outputTo;
    const pid_t child = fork();
    if (child == 0) child_process::Become(command, around, out, scratch / "err");
    int state = 0;
    if (child < 0 || waitpid(child, &state, 0) != child) {
        ADD_FAILURE() << "could not run " << command[0];
        return {};
    }
    const int status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
    return {status, isKept ? ReadText(out) : std::string(), ReadText(scratch / "err")};
}

}  // namespace pictavo::tests
