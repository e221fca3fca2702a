#pragma once

/// A desktop entry, the file in which a desktop finds a program's command, and that command's quoting. Here a
/// command is written as the program knows it, PROGRAM "%1", the program without quotation marks.

#include <functional>
#include <optional>
#include <string>

namespace pictavo {

/// The group of an entry's own keys.
inline constexpr const char* kDesktopEntry = "Desktop Entry";

/// A desktop entry that opens the files of a type by `command` and stands in no menu. `icon` is a name in the
/// icon theme; may be empty.
std::string DesktopEntryText(const std::string& command, const std::string& type, const std::string& icon);

/// The command of a desktop entry; nothing without an Exec line. Codes that stand for a file or its address
/// are read as "%1". `locate` gives the full path of a program that is named without one.
std::optional<std::string> CommandOfEntry(const std::string& entry,
                                          const std::function<std::string(const std::string&)>& locate);

}  // namespace pictavo
