#pragma once

/// A program that runs beside the test, to be stopped in the middle of its work.

#include <chrono>
#include <csignal>
#include <thread>

#include "support/ChildProcess.h"

namespace pictavo::tests {

class StartedProgram {
  public:
    explicit StartedProgram(const std::vector<std::string>& command, const Surroundings& around = {}) {
        child_ = fork();
        if (child_ < 0) std::abort();  // a signal to it would go to every program
        if (child_ == 0) child_process::Become(command, around, scratch_ / "out", scratch_ / "err");
    }
    ~StartedProgram() {
        if (child_ > 0) End(SIGKILL);
    }
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    void Send(int signal) const { kill(child_, signal); }

    /// Sends the signal and waits for the end.
    Ended End(int signal) {
        Send(signal);
        return AwaitEnd();
    }

    Ended AwaitEnd() {
        int state = 0;
        EXPECT_EQ(waitpid(child_, &state, 0), child_);
        child_ = -1;
        const int status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
        return {status, ReadText(scratch_ / "out"), ReadText(scratch_ / "err")};
    }

    /// Bytes that the program has written so far, to wherever.
    std::uint64_t BytesWritten() const {
        const std::string count = WhatTheSystemSays("io", "wchar:");
        return count.empty() ? 0 : std::stoull(count);
    }

    bool HasEnded() const {
        const std::string state = WhatTheSystemSays("status", "State:");
        return state.empty() || state == "Z";
    }

    /// Whether the signal would be handled by the program, not by the system. One that has ended handles
    /// none.
    bool Handles(int signal) const {
        if (HasEnded()) return false;
        const std::string handled = WhatTheSystemSays("status", "SigCgt:");
        return !handled.empty() && (std::stoull(handled, nullptr, 16) >> (signal - 1)) % 2 == 1;
    }

  private:
    /// The value of a line about the program; empty when the program is gone.
    std::string WhatTheSystemSays(const std::string& file, const std::string& key) const {
        std::ifstream lines("/proc/" + std::to_string(child_) + "/" + file);
        for (std::string word; lines >> word;)
            if (word == key && lines >> word) return word;
        return "";
    }

    TempFolder scratch_;
    pid_t child_ = -1;
};

/// Looks again and again until `isSo`, for a minute at most; whether it came so. Machines are busy at times.
template <typename Condition>
bool Await(Condition isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

}  // namespace pictavo::tests
