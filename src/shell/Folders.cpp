#include "shell/Folders.h"

#include "core/OutputFile.h"

namespace pictavo {

namespace {

constexpr const char* kSettingsName = "Pictavo.ini";

/// A file or anything else of that name: what is there is not passed over.
bool Exists(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

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
    if (userFolder.empty() || Exists(beside)) return beside;
    if (Exists(userFolder / kSettingsName)) return userFolder / kSettingsName;
    return CanBeCreated(beside) ? beside : InUserFolder(userFolder);
}

}  // namespace pictavo
