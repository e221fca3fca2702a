#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace pictavo::system_file {

/// What begins a long path of a folder on a disk, and one of a share.
inline constexpr std::wstring_view kLongMark = L"\\\\?\\";
inline constexpr std::wstring_view kLongShareMark = L"\\\\?\\UNC\\";

/// `path` as the system's calls take it at any length: a long one is made absolute and marked as such, since
/// the calls refuse names of 260 characters and more without the mark. A short one stays as it is.
std::wstring SystemPath(const std::filesystem::path& path);

}  // namespace pictavo::system_file
