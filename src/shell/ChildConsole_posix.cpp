#include "shell/ChildConsole.h"

namespace pictavo {

void HideConsole(QProcess&) {}

}  // namespace pictavo
