#include <windows.h>

#include "core/AsciiText.h"
#include "core/CommandLine_win32.h"
#include "core/PathText.h"
#include "core/SystemError_win32.h"
#include "core/SystemNames.h"
#include "core/SystemPath_win32.h"
#include "shell/Shell_.h"

namespace pictavo {

namespace {

constexpr DWORD kBetweenQuestions = 100;  // milliseconds
constexpr DWORD kToFinish = 3000;         // milliseconds

/// Something to read that is at its end, and to write that keeps nothing, for a child to take over.
HANDLE OpenNothing() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Without a console window; false when the program cannot be started.
bool Start(const std::filesystem::path& program, std::wstring line, HANDLE nothing,
           PROCESS_INFORMATION& child) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = start.hStdOutput = start.hStdError = nothing;
    return CreateProcessW(system_file::SystemPath(program).c_str(), line.data(), nullptr, nullptr, TRUE,
                          CREATE_NO_WINDOW, nullptr, nullptr, &start, &child) != 0;
}

/// The child's exit status.
DWORD AwaitEnd(const PROCESS_INFORMATION& child, const std::function<bool()>& goesOn) {
    while (goesOn() && WaitForSingleObject(child.hProcess, kBetweenQuestions) == WAIT_TIMEOUT) {
    }
    if (WaitForSingleObject(child.hProcess, kToFinish) == WAIT_TIMEOUT) TerminateProcess(child.hProcess, 1);
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(child.hProcess, &status);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    return status;
}

/// A batch file is run by a shell, which takes the arguments apart by rules of its own.
bool IsBatchFile(const std::filesystem::path& program) {
    const std::string extension = Lowered(PathText(program.extension()));
    return extension == ".bat" || extension == ".cmd";
}

std::string TroubleOf(DWORD status) {
    return status == 0 ? "" : "ended with status " + std::to_string(status);
}

}  // namespace

std::string ChildProcessRunner::RunAndWait(const std::filesystem::path& program,
                                           const std::vector<std::string>& arguments) {
    const std::filesystem::path whole = system_file::WholePath(program);
    if (IsBatchFile(whole))
        return "cannot be started (it is a batch file; only a program can be the converter)";
    const HANDLE nothing = OpenNothing();
    PROCESS_INFORMATION child{};
    const bool isStarted = Start(whole, CommandLineOf(whole, arguments), nothing, child);
    const DWORD reason = GetLastError();
    CloseHandle(nothing);
    if (!isStarted) return "cannot be started (" + system_file::Reason(reason) + ")";
    return TroubleOf(AwaitEnd(child, goesOn_));
}

}  // namespace pictavo
