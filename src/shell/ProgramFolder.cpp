#include "shell/ProgramFolder.h"

#include <QCoreApplication>

namespace pictavo {

std::filesystem::path ProgramFolder() {
#ifdef __linux__
    std::error_code error;
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) return executable.parent_path();
#endif
    return QCoreApplication::applicationDirPath().toStdU16String();
}

}  // namespace pictavo
