#pragma once

#include <string>
#include <windows.h>

namespace pictavo::system_file {

/// The reason that the system gives by a number, such as that of GetLastError: in English on one line, and
/// where other systems know the same reason, in their words.
std::string Reason(DWORD code);

}  // namespace pictavo::system_file
