#include "shell/ReadMe.h"

#include <algorithm>

#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

constexpr const char* kReadMe = "ReadMe.txt";

}  // namespace

std::filesystem::path ReadMeFile(const std::vector<std::filesystem::path>& folders) {
    const auto found = std::find_if(folders.begin(), folders.end(),
                                    [](const auto& folder) { return !FileMissing(folder / kReadMe); });
    return (found != folders.end() ? *found : folders.front()) / kReadMe;
}

}  // namespace pictavo
