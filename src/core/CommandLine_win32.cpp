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

/// Backslashes stand for themselves unless a quotation mark follows them.
std::wstring Quoted(std::wstring_view argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted.push_back(c);
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::wstring_view WithoutProgram(std::wstring_view line) {
    const std::size_t end = std::min(EndOfProgram(line), line.size());
    return line.substr(std::min(line.find_first_not_of(kBlanks, end), line.size()));
}

std::string CommandLineOfProgram() {
    return Utf8Text(WithoutProgram(GetCommandLineW()));
}

std::wstring CommandLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::wstring line = L'"' + program.native() + L'"';  // whose name holds no quotation mark
    for (const std::string& argument : arguments) line += L' ' + Quoted(WideText(argument));
    return line;
}

}  // namespace pictavo
