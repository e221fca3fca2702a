#include "shell/Folders.h"

#include "core/ByteSource.h"
#include "core/OutputFile.h"

namespace pictavo {

namespace {

constexpr std::uint64_t kLongestSettings = std::uint64_t{1} << 20;

/// Tried out, since rights alone do not tell; the file that is begun leaves nothing behind.
bool CanBeCreated(const std::filesystem::path& path) {
    return OutputFile::Create(path).has_value();
}

/// Where nothing can be read, or nothing written, the user begins with the settings that hold without a file.
void CarryOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    const auto source = FileSource::Open(from);
    if (!source || (*source)->Size() > kLongestSettings) return;
    const auto bytes = (*source)->ReadExactly(0, (*source)->Size());
    if (bytes) static_cast<void>(WriteWholeFile(to, *bytes, CommitMode::KeepExisting));
}

}  // namespace

std::filesystem::path SettingsFile(const std::filesystem::path& programFolder,
                                   const std::filesystem::path& userFolder) {
    const std::filesystem::path beside = programFolder / kSettingsFileName;
    const std::filesystem::path ofUser = userFolder / kSettingsFileName;
    if (userFolder.empty()) return beside;
    if (CanBeCreated(beside)) return NameIsFree(beside) && !NameIsFree(ofUser) ? ofUser : beside;
    static_cast<void>(EnsureFolder(userFolder));  // the saving tells why when it cannot be made
    if (NameIsFree(ofUser)) CarryOver(beside, ofUser);
    return ofUser;
}

}  // namespace pictavo
