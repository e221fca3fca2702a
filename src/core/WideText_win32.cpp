#include "core/WideText_win32.h"

#include <windows.h>

namespace pictavo {

std::wstring WideText(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');  // no character takes more units than bytes
    wide.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), length)));
    return wide;
}

std::string Utf8Text(std::wstring_view wide) {
    constexpr int kMostBytesOfUnit = 3;
    const int length = static_cast<int>(wide.size());
    std::string utf8(wide.size() * kMostBytesOfUnit, '\0');
    utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(),
                                                             length * kMostBytesOfUnit, nullptr, nullptr)));
    return utf8;
}

}  // namespace pictavo
