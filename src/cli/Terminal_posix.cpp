#include <array>
#include <atomic>
#include <csignal>
#include <unistd.h>

#include "cli/Terminal.h"

namespace pictavo::cli {

namespace {

std::atomic<bool> interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set by a signal handler");

constexpr std::array kInterrupts = {SIGINT, SIGTERM, SIGHUP};

/// An interrupt that whoever started the program had ignored stays so.
void HandleInterrupts(void (*handler)(int)) {
    for (const int interrupt : kInterrupts)
        if (std::signal(interrupt, handler) == SIG_IGN) std::signal(interrupt, SIG_IGN);
}

/// The next one ends the program.
extern "C" void NoteInterrupt(int) {
    interrupted = true;
    HandleInterrupts(SIG_DFL);
}

}  // namespace

bool IsErrorTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

void CatchInterrupts() {
    if (!interrupted) HandleInterrupts(NoteInterrupt);
}

bool WasInterrupted() {
    return interrupted;
}

}  // namespace pictavo::cli
