#include "shell/Folders.h"

#include "core/OutputFile.h"

namespace pictavo {

namespace {

constexpr const char* kSettingsName = "Pictavo.ini";

/// Tried out, since rights alone do not tell; the file that is begun leaves nothing behind.
bool CanBeCreated(const std::filesystem::path& path) {
    return OutputFile::Create(path).has_value();
}

/// The saving tells why when the folder can not be made.
std::filesystem::path InUserFolder(const std::filesystem::path& userFolder) {
    static_cast<void>(EnsureFolder(userFolder));
    return userFolder / kSettingsName;
}

}  // namespace

std::filesystem::path SettingsFile(const std::filesystem::path& programFolder,
                                   const std::filesystem::path& userFolder) {
    const std::filesystem::path beside = programFolder / kSettingsName;
    if (userFolder.empty() || !NameIsFree(beside)) return beside;
    if (!NameIsFree(userFolder / kSettingsName)) return userFolder / kSettingsName;
    return CanBeCreated(beside) ? beside : InUserFolder(userFolder);
}

}  // namespace pictavo
