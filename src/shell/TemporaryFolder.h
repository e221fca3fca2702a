#pragma once

#include <filesystem>

namespace pictavo {

/// The names of folders for one program's own temporary files begin with this.
inline constexpr const char* kPrivateFolderPrefix = "pictavo-";

/// The folder that the variable TMP names, as it is named; empty when it is not set or names no folder.
std::filesystem::path NamedTemporaryFolder();

/// The one that TMP names, else the system's.
std::filesystem::path TemporaryFolder();

}  // namespace pictavo
