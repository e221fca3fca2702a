#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "shell/Shell_.h"

namespace pictavo {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenLooks{1};
constexpr milliseconds kBetweenQuestions{100};
constexpr milliseconds kToFinish{3000};
constexpr milliseconds kToEndPolitely{1000};

/// What a child starts with: nothing to read, nowhere to write, and the signals as the system has them.
class ChildSetting {
  public:
    ChildSetting() {
        posix_spawn_file_actions_init(&files);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
        sigset_t usual;
        sigemptyset(&usual);
        for (const int signal : {SIGPIPE, SIGXFSZ}) sigaddset(&usual, signal);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigdefault(&attributes, &usual);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    }
    ~ChildSetting() {
        posix_spawn_file_actions_destroy(&files);
        posix_spawnattr_destroy(&attributes);
    }
    ChildSetting(const ChildSetting&) = delete;
    ChildSetting& operator=(const ChildSetting&) = delete;

    posix_spawn_file_actions_t files{};
    posix_spawnattr_t attributes{};
};

/// 0, or the number of the system's reason why there is no child.
int Start(const std::filesystem::path& program, std::vector<std::string> arguments, pid_t& child) {
    std::string name = program.string();
    std::vector<char*> pointers{name.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const ChildSetting setting;
    return posix_spawn(&child, name.c_str(), &setting.files, &setting.attributes, pointers.data(), environ);
}

bool IsOver(pid_t child) {
    siginfo_t end{};
    return waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOHANG | WNOWAIT) != 0 || end.si_pid != 0;
}

/// Looks again and again, for so long at most: this works on every system, and with every use of signals.
bool HasEnded(pid_t child, milliseconds patience) {
    const auto start = std::chrono::steady_clock::now();
    while (!IsOver(child)) {
        if (std::chrono::steady_clock::now() - start >= patience) return false;
        std::this_thread::sleep_for(kBetweenLooks);
    }
    return true;
}

/// Lets the child finish, asks it to end, and makes it, each where it does not.
void End(pid_t child) {
    if (HasEnded(child, kToFinish)) return;
    kill(child, SIGTERM);
    if (!HasEnded(child, kToEndPolitely)) kill(child, SIGKILL);
}

/// The child's status as the system tells it.
int AwaitEnd(pid_t child, const std::function<bool()>& goesOn) {
    while (!HasEnded(child, kBetweenQuestions)) {
        if (goesOn()) continue;
        End(child);
        break;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::string TroubleOf(int status) {
    if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
    const int code = WEXITSTATUS(status);
    return code == 0 ? "" : "ended with status " + std::to_string(code);
}

}  // namespace

std::string ChildProcessRunner::RunAndWait(const std::filesystem::path& program,
                                           const std::vector<std::string>& arguments) {
    pid_t child = 0;
    if (const int code = Start(program, arguments, child); code != 0)
        return "cannot be started (" + std::generic_category().message(code) + ")";
    return TroubleOf(AwaitEnd(child, goesOn_));
}

}  // namespace pictavo
