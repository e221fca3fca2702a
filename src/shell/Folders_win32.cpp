#include "shell/Folders.h"
#include "shell/Variable.h"

namespace pictavo {

namespace {

constexpr const char* kFolderName = "Pictavo";

}  // namespace

std::filesystem::path UserFolder() {
    const std::filesystem::path folder = PathOfVariable("APPDATA");
    return folder.empty() ? folder : folder / kFolderName;
}

std::vector<std::filesystem::path> DataFolders(const std::filesystem::path& programFolder) {
    return {programFolder};
}

}  // namespace pictavo
