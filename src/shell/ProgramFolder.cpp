#include "shell/ProgramFolder.h"

#include <QCoreApplication>

namespace pictavo {

std::filesystem::path ProgramFolder() {
    return QCoreApplication::applicationDirPath().toStdU16String();
}

}  // namespace pictavo
