#include "shell/Folders.h"

#include "core/OutputFile.h"

namespace pictavo {

namespace {

/// Tried out, since rights alone do not tell; the file that is begun leaves nothing behind.
bool CanBeCreated(const std::filesystem::path& path) {
    return OutputFile::Create(path).has_value();
}

/// The saving tells why when the folder can not be made.
std::filesystem::path InUserFolder(const std::filesystem::path& userFolder) {
    static_cast<void>(EnsureFolder(userFolder));
    return userFolder / kSettingsFileName;
}

}  // namespace

std::filesystem::path SettingsFile(const std::filesystem::path& programFolder,
                                   const std::filesystem::path& userFolder) {
    const std::filesystem::path beside = programFolder / kSettingsFileName;
    if (userFolder.empty() || !NameIsFree(beside)) return beside;
    if (!NameIsFree(userFolder / kSettingsFileName)) return userFolder / kSettingsFileName;
    return CanBeCreated(beside) ? beside : InUserFolder(userFolder);
}

}  // namespace pictavo
