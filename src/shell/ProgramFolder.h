#pragma once

#include <filesystem>

namespace pictavo {

/// The folder of the executable itself, also when it was started through a link, and whatever the current
/// folder is. Needs a QCoreApplication everywhere but on Linux with /proc.
std::filesystem::path ProgramFolder();

}  // namespace pictavo
