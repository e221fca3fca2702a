#pragma once

/// The user's choices and the recent files, as the settings file "Pictavo.ini" keeps them.
/// Layout: docs/formats/settings.md.

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "core/ByteSource.h"

namespace pictavo {

/// Members are named as the keys of the file are.
struct AppSettings {
    std::string nConvert;  ///< path of the converter, in UTF-8
    std::string Language;
    bool Transparency = false;
    bool CompressGPF = false;
    bool DefaultGPF2 = false;
    bool ZeroFilename = false;
    bool HEXFilename = false;
    bool ChanR = false;
    bool ChanG = false;
    bool ChanB = false;
    bool ChanA = false;
    std::array<std::optional<std::string>, 3> MRU;  ///< the recent files that are shown

    bool operator==(const AppSettings&) const = default;
};

/// Reads the lines of a settings file over `initial`. Kept: a line belongs to every key that it begins with,
/// whatever follows the key; a check box is on when the line ends in "true" exactly. The last line of a key
/// wins, lines of no key are passed over. Fails as LineReader does.
Result<AppSettings> ReadAppSettings(const ByteSource& source, AppSettings initial);

/// The same from a file; a missing one gives `initial`. Fails with FileMissing when what stands there cannot
/// be opened.
Result<AppSettings> LoadAppSettings(const std::filesystem::path& path, AppSettings initial);

/// The whole file as it is written: every key in the order of the file, recent files only where they are
/// shown, lines ended by CR LF. A text with a line end in it cannot be told in a line and has none.
std::string SettingsText(const AppSettings& settings);

/// Writes SettingsText. Fails with WriteFailed; until the new file stands complete, synced to the disk, the
/// old one stays.
Status SaveAppSettings(const std::filesystem::path& path, const AppSettings& settings);

/// Kept: adds the lines of the recent files that are shown behind what the file holds, which so grows until
/// it is written anew. A missing file is created; with nothing to add, nothing is written. Fails with
/// FileMissing when the file is there but cannot be read, with ReadFailed and with WriteFailed; until the
/// new file stands complete, synced to the disk, the old one stays.
Status AppendRecentFiles(const std::filesystem::path& path, const AppSettings& settings);

/// Puts a path at the top of the recent files; those that were shown move down. Kept: of the others only the
/// third is compared with the first, so opening B with C, B, A shown gives B, C and drops A, and opening A
/// with B, A shown gives A, B.
void NoteRecentFile(AppSettings& settings, const std::string& path);

}  // namespace pictavo
