#pragma once

#include <filesystem>
#include <vector>

namespace pictavo {

/// Opens the first ReadMe.txt of these folders with the desktop's program for text files, and does not wait
/// for it. Says nothing when there is none.
void ShowReadMe(const std::vector<std::filesystem::path>& folders);

}  // namespace pictavo
