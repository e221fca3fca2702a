#pragma once

#include <array>
#include <filesystem>

namespace pictavo {

/// What a file is opened as. Names decide it, never contents.
enum class FileKind { Fullflash, Gpf, Picture, Unknown };

/// Of the pictures that are no GPF, in the order in which choosers offer them.
inline constexpr std::array kPlainPictureExtensions = {".bmp", ".gif", ".jpg", ".png"};

/// By the ending of a name on the command line, in exactly this case: ".BIN" is unknown, and so is ".jpeg".
FileKind KindOnCommandLine(const std::filesystem::path& name);

/// By the last four characters of a chosen or dropped name, in whatever case. Kept: "gpf2" needs no dot.
FileKind KindWhenChosen(const std::filesystem::path& name);

}  // namespace pictavo
