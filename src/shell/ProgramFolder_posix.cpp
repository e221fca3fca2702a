#include <QCoreApplication>

#include "shell/ProgramFolder.h"

namespace pictavo {

std::filesystem::path ProgramFolder() {
#ifdef __linux__
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) return executable.parent_path();
#endif
    return QCoreApplication::applicationDirPath().toStdU16String();
}

std::filesystem::path WindowProgram(const std::filesystem::path& programFolder) {
    return programFolder / "pictavo";
}

std::filesystem::path ConverterProgram(const std::filesystem::path& programFolder) {
    return programFolder / "pictavo-convert";
}

const char* ConverterPattern() {
    return "*";
}

/// "lng" as on Windows would turn nconvert into nconvert.lng.
const char* ConverterExtension() {
    return "";
}

}  // namespace pictavo
