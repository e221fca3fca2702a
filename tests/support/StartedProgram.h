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
        int state = 0;
        EXPECT_EQ(waitpid(child_, &state, 0), child_);
        child_ = -1;
        const int status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
        return {status, ReadText(scratch_ / "out"), ReadText(scratch_ / "err")};
    }

    /// Bytes that the program has written so far, to wherever.
    std::uint64_t BytesWritten() const {
        std::ifstream counts("/proc/" + std::to_string(child_) + "/io");
        std::string key;
        std::uint64_t count = 0;
        while (counts >> key >> count)
            if (key == "wchar:") return count;
        return 0;
    }

  private:
    TempFolder scratch_;
    pid_t child_ = -1;
};

/// Looks again and again until `isSo`, for ten seconds at most; whether it came so.
template <typename Condition>
bool Await(Condition isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

}  // namespace pictavo::tests
