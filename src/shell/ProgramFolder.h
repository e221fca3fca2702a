#pragma once

/// Where the running program lies, and what lies beside it; how a program is named on this system.

#include <filesystem>

namespace pictavo {

/// The executable itself, by whatever name, also when it was started through a link, and whatever the current
/// folder is. Needs a QCoreApplication everywhere but on Windows and on Linux with /proc.
std::filesystem::path RunningProgram();

/// The folder that it lies in.
inline std::filesystem::path ProgramFolder() {
    return RunningProgram().parent_path();
}

/// The converter that comes with the program. It need not be there.
std::filesystem::path ConverterProgram(const std::filesystem::path& programFolder);

/// What a chooser offers for a converter on this system, and what it puts behind a name without an extension.
const char* ConverterPattern();
const char* ConverterExtension();

}  // namespace pictavo
