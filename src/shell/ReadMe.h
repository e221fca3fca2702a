#pragma once

#include <filesystem>
#include <vector>

namespace pictavo {

/// The first ReadMe.txt of these folders, of which there is at least one; when none has it, where that of the
/// first would be.
std::filesystem::path ReadMeFile(const std::vector<std::filesystem::path>& folders);

/// Opens the manual with the desktop's program for text files, and does not wait for it. Says nothing when it
/// is missing.
///
/// On Windows it is notepad.exe, whether the manual is there or not. Kept: the path stands without quotation
/// marks behind it, blanks or not.
void ShowReadMe(const std::filesystem::path& readMe);

}  // namespace pictavo
