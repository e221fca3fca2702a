#include <windows.h>

#include "shell/Folders.h"
#include "shell/Variable.h"

namespace pictavo {

namespace {

constexpr const char* kFolderName = "Pictavo";
constexpr unsigned kCyrillicCodePage = 1251;

}  // namespace

std::filesystem::path UserFolder() {
    const std::filesystem::path folder = PathOfVariable("APPDATA");
    return folder.empty() ? folder : folder / kFolderName;
}

std::vector<std::filesystem::path> DataFolders(const std::filesystem::path& programFolder) {
    return {programFolder};
}

bool IsLocaleCyrillic() {
    return GetACP() == kCyrillicCodePage;
}

}  // namespace pictavo
