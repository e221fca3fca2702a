#include "core/FolderIndex.h"

#include <algorithm>

#include "core/AsciiText.h"
#include "core/PathText.h"
#include "core/SystemNames.h"

namespace pictavo {

Result<FolderIndex> FolderIndex::Read(const std::filesystem::path& folder) {
    FolderIndex index;
    index.folder_ = folder;
    PICTAVO_TRY(auto names, system_file::FileNamesIn(folder));
    std::sort(names.begin(), names.end());
    for (std::filesystem::path& name : names) {
        std::string key = Lowered(PathText(name));
        index.names_.emplace(std::move(key), std::move(name));
    }
    return index;
}

std::optional<std::filesystem::path> FolderIndex::Find(const std::string& name) const {
    const auto [first, end] = names_.equal_range(Lowered(name));
    if (first == end) return std::nullopt;
    const auto exact =
        std::find_if(first, end, [path = PathOf(name)](const auto& entry) { return entry.second == path; });
    return folder_ / (exact == end ? first : exact)->second;
}

}  // namespace pictavo
