#pragma once

#include <filesystem>
#include <vector>

namespace pictavo {

/// Where a freedesktop.org desktop keeps its settings and data, the user's own folder first, which is the
/// only one that is written. None needs to exist.
struct DesktopFolders {
    std::vector<std::filesystem::path> config;
    std::vector<std::filesystem::path> data;
    std::filesystem::path templates;  ///< of the New menu; empty where the user has none
};

/// Those of this user, by the variables XDG_CONFIG_HOME, XDG_DATA_HOME and so on.
DesktopFolders UserDesktopFolders();

}  // namespace pictavo
