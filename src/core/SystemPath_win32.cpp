#include "core/SystemPath_win32.h"

#include <windows.h>

namespace pictavo::system_file {

namespace {

constexpr std::wstring_view kDeviceMark = L"\\\\.\\";
constexpr std::wstring_view kShareStart = L"\\\\";

/// Room for a name of 8.3 in a folder: what the system wants to be left of a folder's path.
constexpr std::size_t kShortPath = MAX_PATH - 12;

/// Absolute, with backslashes only and without "." and ".."; empty when the system has none.
std::wstring FullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    full.resize(length < full.size() ? length : 0);
    return full;
}

bool IsMarked(const std::wstring& path) {
    return path.starts_with(kLongMark) || path.starts_with(kDeviceMark);
}

}  // namespace

std::wstring SystemPath(const std::filesystem::path& path) {
    const std::wstring full = FullPath(path.native());
    if (full.size() < kShortPath || IsMarked(full)) return path.native();
    if (full.starts_with(kShareStart)) return std::wstring(kLongShareMark) + full.substr(kShareStart.size());
    return std::wstring(kLongMark) + full;
}

}  // namespace pictavo::system_file
