#pragma once

#include <filesystem>

namespace pictavo {

/// The folder of the executable, whatever the current folder is. Needs a QCoreApplication.
std::filesystem::path ProgramFolder();

}  // namespace pictavo
