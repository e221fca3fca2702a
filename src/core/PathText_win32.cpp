#include <windows.h>

#include "core/PathText.h"

namespace pictavo {

// The conversions of the standard library throw on what is no Unicode; the system's replace it.

std::string PathText(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int units = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, text.data(), length, nullptr, nullptr);
    return text;
}

std::filesystem::path PathOf(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), units);
    return wide;
}

}  // namespace pictavo
