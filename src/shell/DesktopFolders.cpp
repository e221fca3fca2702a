#include "shell/DesktopFolders.h"

#include <QDir>
#include <QStandardPaths>

#include "shell/QtPath.h"

namespace pictavo {

namespace {

std::vector<std::filesystem::path> Folders(QStandardPaths::StandardLocation location) {
    std::vector<std::filesystem::path> folders;
    for (const QString& folder : QStandardPaths::standardLocations(location))
        folders.push_back(StdPath(folder));
    return folders;
}

/// A user without a templates folder has his home folder named in its place.
std::filesystem::path TemplatesFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::TemplatesLocation);
    return QDir(folder) == QDir::home() ? std::filesystem::path() : StdPath(folder);
}

}  // namespace

DesktopFolders UserDesktopFolders() {
    return {Folders(QStandardPaths::GenericConfigLocation), Folders(QStandardPaths::GenericDataLocation),
            TemplatesFolder()};
}

}  // namespace pictavo
