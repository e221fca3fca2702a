#include <QCoreApplication>

#include "shell/ProgramFolder.h"
#include "shell/QtPath.h"

namespace pictavo {

std::filesystem::path RunningProgram() {
#ifdef __linux__
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) return executable;
#endif
    return StdPath(QCoreApplication::applicationFilePath());
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
