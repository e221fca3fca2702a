#include <windows.h>

#include "core/PathText.h"
#include "core/SystemPath_win32.h"
#include "core/WideText_win32.h"

namespace pictavo {

using system_file::kLongMark;
using system_file::kLongShareMark;

// The conversions of the standard library throw on what is no Unicode; the system's replace it.

std::string PathText(const std::filesystem::path& path) {
    return Utf8Text(path.native());
}

std::filesystem::path PathOf(std::string_view text) {
    return WideText(text);
}

std::filesystem::path ShortPath(const std::filesystem::path& path) {
    const std::wstring whole = system_file::SystemPath(path);
    std::wstring name(GetShortPathNameW(whole.c_str(), nullptr, 0), L'\0');
    const DWORD length = GetShortPathNameW(whole.c_str(), name.data(), static_cast<DWORD>(name.size()));
    if (length == 0 || length >= name.size()) return path;
    name.resize(length);
    const bool isMarked = name.starts_with(kLongMark) && !name.starts_with(kLongShareMark);
    return isMarked && length < MAX_PATH ? name.substr(kLongMark.size()) : name;
}

}  // namespace pictavo
