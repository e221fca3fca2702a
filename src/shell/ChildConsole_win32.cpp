#include <windows.h>

#include "shell/ChildConsole.h"

namespace pictavo {

void HideConsole(QProcess& process) {
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* start) {
        start->flags |= static_cast<unsigned long>(CREATE_NO_WINDOW);
    });
}

}  // namespace pictavo
