#pragma once

#include <QProcess>

namespace pictavo {

/// Keeps a child that is a console program from opening a console window on Windows. Elsewhere there is none.
void HideConsole(QProcess& process);

}  // namespace pictavo
