#pragma once

/// The command that a freedesktop.org desktop opens the files of a MIME type with, looked up in the user's
/// folders and in the system's.

#include <string>

#include "shell/DesktopFolders.h"

namespace pictavo {

/// That of the first default application that exists, else of the first application that opens the type at
/// all; empty when there is none. Written as DesktopEntry.h says.
std::string FoundCommand(const DesktopFolders& folders, const std::string& type);

/// The program's path where the search path leads to one, links followed; else the name alone.
std::string LocatedProgram(const std::string& name);

}  // namespace pictavo
