#include "core/FolderIndex.h"

#include <algorithm>
#include <vector>

namespace pictavo {

namespace {

std::string Lowered(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

}  // namespace

Result<FolderIndex> FolderIndex::Read(const std::filesystem::path& folder) {
    FolderIndex index;
    index.folder_ = folder;
    std::error_code error;
    std::vector<std::string> names;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (std::error_code ignored; entry->is_regular_file(ignored))
            names.push_back(entry->path().filename().string());
    if (error)
        return Fail(ErrorKind::FileMissing, folder, "the folder can not be read (" + error.message() + ")");
    std::sort(names.begin(), names.end());
    for (std::string& name : names) {
        std::string key = Lowered(name);
        index.names_.emplace(std::move(key), std::move(name));
    }
    return index;
}

std::optional<std::filesystem::path> FolderIndex::Find(const std::string& name) const {
    const auto [first, end] = names_.equal_range(Lowered(name));
    if (first == end) return std::nullopt;
    const auto exact = std::find_if(first, end, [&](const auto& entry) { return entry.second == name; });
    return folder_ / (exact == end ? first : exact)->second;
}

}  // namespace pictavo
