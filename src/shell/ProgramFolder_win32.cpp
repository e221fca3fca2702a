#include <string>
#include <windows.h>

#include "shell/ProgramFolder.h"

namespace pictavo {

namespace {

constexpr std::size_t kLongestPath = 32'768;

}  // namespace

std::filesystem::path RunningProgram() {
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::filesystem::path ConverterProgram(const std::filesystem::path& programFolder) {
    return programFolder / "pictavo-convert.exe";
}

const char* ConverterPattern() {
    return "nconvert.exe";
}

/// Kept: carried over from the language chooser.
const char* ConverterExtension() {
    return "lng";
}

}  // namespace pictavo
