#pragma once

#include <filesystem>
#include <vector>

namespace pictavo {

/// Opens the first ReadMe.txt of these folders with the desktop's program for text files, and does not wait
/// for it. Says nothing when there is none.
///
/// On Windows it is notepad.exe, for that of the first folder, whether it is there or not. Kept: the path
/// stands without quotation marks behind it, blanks or not.
void ShowReadMe(const std::vector<std::filesystem::path>& folders);

}  // namespace pictavo
