#pragma once

/// Where the program's own files lie. `programFolder` is the folder of the executable.

#include <filesystem>
#include <vector>

namespace pictavo {

inline constexpr const char* kSettingsFileName = "Pictavo.ini";

/// The user's configuration folder, which need not exist; empty when the system knows none.
std::filesystem::path UserFolder();

/// The settings file: the one beside the executable, else the one in `userFolder`, and when there is neither,
/// a new one beside the executable. But where nothing can be written there, it is that in `userFolder`, which
/// is then created; a new one takes over what the one beside the executable holds.
std::filesystem::path SettingsFile(const std::filesystem::path& programFolder,
                                   const std::filesystem::path& userFolder = UserFolder());

/// The folders of the files that come with the program (languages, the manual), in the order in which they
/// are to be searched: that of the executable, then the installed data, which Windows does not know.
std::vector<std::filesystem::path> DataFolders(const std::filesystem::path& programFolder);

}  // namespace pictavo
