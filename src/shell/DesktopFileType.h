#pragma once

/// The program's own file type as files in the user's data and configuration folders, as a freedesktop.org
/// desktop wants them: MIME package, icons, desktop entry, default application, templates of the New menu.
/// docs/formats/associations.md shows them.

#include <functional>
#include <set>
#include <string>

#include "core/Bytes.h"
#include "session/Ports.h"
#include "shell/DesktopFolders.h"

namespace pictavo {

/// What is known of the type; what is empty has no file.
struct FileType {
    std::set<std::string> extensions;
    std::set<std::string> newFiles;      ///< extensions of files that the New menu makes
    std::set<std::string> droppedFiles;  ///< extensions of files that it shall make no more
    std::string description;
    std::string command;  ///< as DesktopEntry.h says
    bool hasIcon = false;
};

/// The type's icon as a PNG file of `size` x `size` pixels.
using DrawIcon = std::function<Bytes(int size)>;

/// The type as the user's own folders have it, but for the New menu, of which nothing is read.
FileType LoadFileType(const DesktopFolders& folders);

/// Writes the files that differ from what they should hold, each whole; `processes` runs the desktop's own
/// tools that refresh its caches, where they are installed, and what one of them meets is not told: the files
/// hold, and the desktop reads them sooner or later. Fails with WriteFailed, naming the file, and also
/// when a file that is to be changed is there but cannot be read; it then stays as it is, and so do the
/// files behind it.
Status SaveFileType(const FileType& type, const DesktopFolders& folders, ProcessRunner& processes,
                    const DrawIcon& drawIcon);

/// Whether the extension is one of the type's, in the user's folders or in the system's.
bool HasFileType(const DesktopFolders& folders, const std::string& extension);

}  // namespace pictavo
