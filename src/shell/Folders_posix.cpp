#include <QLocale>
#include <QStandardPaths>

#include "shell/Folders.h"
#include "shell/QtPath.h"

namespace pictavo {

namespace {

constexpr const char* kFolderName = "pictavo";

/// The locale that names the character set, by the variables that the system takes it from.
QLocale LocaleOfTexts() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty()) return QLocale(name);
    return QLocale::system();
}

}  // namespace

std::filesystem::path UserFolder() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (folder.isEmpty()) return {};
    return StdPath(folder) / kFolderName;
}

std::vector<std::filesystem::path> DataFolders(const std::filesystem::path& programFolder) {
    return {programFolder, programFolder.parent_path() / "share" / kFolderName};
}

bool IsLocaleCyrillic() {
    return LocaleOfTexts().script() == QLocale::CyrillicScript;
}

}  // namespace pictavo
