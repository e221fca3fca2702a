#include <atomic>
#include <cstdio>
#include <io.h>
#include <windows.h>

#include "cli/Terminal.h"

namespace pictavo::cli {

namespace {

constexpr DWORD kUntilTheEnd = 60'000;

std::atomic<bool> interrupted{false};

bool IsEndOfConsole(DWORD event) {
    return event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
}

/// Runs on a thread of its own. FALSE leaves an event to the system, which ends the program.
BOOL WINAPI NoteInterrupt(DWORD event) {
    if (interrupted.exchange(true)) return FALSE;
    if (IsEndOfConsole(event)) Sleep(kUntilTheEnd);  // the system ends the program as soon as this returns
    return TRUE;
}

}  // namespace

bool IsErrorTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

void CatchInterrupts() {
    if (interrupted) return;
    SetConsoleCtrlHandler(NoteInterrupt, FALSE);  // one that stands already, since each counts
    SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

bool WasInterrupted() {
    return interrupted;
}

}  // namespace pictavo::cli
