#include <QStandardPaths>

#include "shell/Folders.h"
#include "shell/QtPath.h"

namespace pictavo {

namespace {

constexpr const char* kFolderName = "pictavo";

}  // namespace

std::filesystem::path UserFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (folder.isEmpty()) return {};
    return StdPath(folder) / kFolderName;
}

std::vector<std::filesystem::path> DataFolders(const std::filesystem::path& programFolder) {
    return {programFolder, programFolder.parent_path() / "share" / kFolderName};
}

}  // namespace pictavo
