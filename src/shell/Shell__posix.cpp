#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell/Shell_.h"

namespace pictavo {

namespace {

constexpr int kBetweenQuestions = 100;  // milliseconds
constexpr int kToFinish = 3000;         // milliseconds
constexpr int kToEndPolitely = 1000;    // milliseconds

/// What a child starts with: nothing to read, nowhere to write, and the signals as the system has them.
class ChildSetting {
  public:
    ChildSetting() {
        posix_spawn_file_actions_init(&files);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGPIPE, SIGXFSZ}) sigaddset(&signals, signal);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setsigdefault(&attributes, &signals);
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

std::optional<pid_t> Start(const std::filesystem::path& program, std::vector<std::string> arguments) {
    std::string name = program.string();
    std::vector<char*> pointers{name.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const ChildSetting setting;
    pid_t child = 0;
    if (posix_spawn(&child, name.c_str(), &setting.files, &setting.attributes, pointers.data(), environ) != 0)
        return std::nullopt;
    return child;
}

/// A handle that can be read from when the child has ended; negative where the system has none.
int HandleOf([[maybe_unused]] pid_t child) {
#ifdef SYS_pidfd_open
    return static_cast<int>(syscall(SYS_pidfd_open, child, 0));
#else
    return -1;
#endif
}

bool HasEnded(int handle, int milliseconds) {
    pollfd end{handle, POLLIN, 0};
    return poll(&end, 1, milliseconds) > 0;
}

/// Lets the child finish, asks it to end, and makes it, each where it does not.
void End(pid_t child, int handle) {
    if (HasEnded(handle, kToFinish)) return;
    kill(child, SIGTERM);
    if (!HasEnded(handle, kToEndPolitely)) kill(child, SIGKILL);
}

void AwaitEnd(pid_t child, const std::function<bool()>& goesOn) {
    const int handle = HandleOf(child);
    while (handle >= 0 && !HasEnded(handle, kBetweenQuestions)) {
        if (goesOn()) continue;
        End(child, handle);
        break;
    }
    if (handle >= 0) close(handle);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace

void ChildProcessRunner::RunAndWait(const std::filesystem::path& program,
                                    const std::vector<std::string>& arguments) {
    if (const auto child = Start(program, arguments)) AwaitEnd(*child, goesOn_);
}

}  // namespace pictavo
