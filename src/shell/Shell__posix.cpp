#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
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

/// 0, or the number of the system's reason why there is no child.
int Start(const std::filesystem::path& program, std::vector<std::string> arguments, pid_t& child) {
    std::string name = program.string();
    std::vector<char*> pointers{name.data()};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const ChildSetting setting;
    return posix_spawn(&child, name.c_str(), &setting.files, &setting.attributes, pointers.data(), environ);
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

/// The child's status as the system tells it.
int AwaitEnd(pid_t child, const std::function<bool()>& goesOn) {
    const int handle = HandleOf(child);
    while (handle >= 0 && !HasEnded(handle, kBetweenQuestions)) {
        if (goesOn()) continue;
        End(child, handle);
        break;
    }
    if (handle >= 0) close(handle);
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
