#include <windows.h>

#include "shell/ReadMe.h"

namespace pictavo {

namespace {

/// A program that cannot be started is told by nobody.
void Start(std::wstring line) {
    STARTUPINFOW startUp{};
    startUp.cb = sizeof startUp;
    startUp.dwFlags = STARTF_USESHOWWINDOW;
    startUp.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startUp,
                        &process))
        return;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

}  // namespace

void ShowReadMe(const std::filesystem::path& readMe) {
    Start(L"notepad.exe " + readMe.wstring());
}

}  // namespace pictavo
