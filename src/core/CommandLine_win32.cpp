#include "core/CommandLine_win32.h"

#include <algorithm>
#include <windows.h>

#include "core/WideText_win32.h"

namespace pictavo {

namespace {

constexpr std::wstring_view kBlanks = L" \t";

std::size_t EndOfProgram(std::wstring_view line) {
    if (!line.starts_with(L'"')) return line.find_first_of(kBlanks);
    const std::size_t end = line.find(L'"', 1);
    return end == std::wstring_view::npos ? end : end + 1;
}

}  // namespace

std::wstring_view WithoutProgram(std::wstring_view line) {
    const std::size_t end = std::min(EndOfProgram(line), line.size());
    return line.substr(std::min(line.find_first_not_of(kBlanks, end), line.size()));
}

std::string CommandLineOfProgram() {
    return Utf8Text(WithoutProgram(GetCommandLineW()));
}

}  // namespace pictavo
