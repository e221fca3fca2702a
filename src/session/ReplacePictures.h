#pragma once

/// Replaces pictures of the list by pictures from files. A replacement is converted into the phone's format
/// and kept as a GPF2 work file; the flash itself is never touched.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// True for a name with one of the extensions that a folder is searched for, in any case.
bool HasPictureExtension(const std::filesystem::path& path);

/// "Load picture" into row `index`, in the compressed type (81, 85, 88, 8A) of the depth that was picked:
/// asks for the file, then ReplaceFrom.
Outcome ReplacePicture(Session& session, Ports& ports, std::size_t index, std::uint8_t typeCode);

/// Replaces row `index` by the picture of a file: asks for the compression unless CompressGPF is set, writes
/// the work file, shows it, and marks the row. A file named .png is refused without a converter, whatever it
/// holds. After a refusal nothing is marked, an older work file stays as it was, and a file that was shown
/// already has made room for the row's own picture.
Outcome ReplaceFrom(Session& session, Ports& ports, std::size_t index, const std::filesystem::path& path,
                    std::uint8_t typeCode);

/// "Load pictures": asks for the folder, then ReplaceFromFolder.
Outcome ReplacePictures(Session& session, Ports& ports, std::uint8_t typeCode);

/// Replaces every row that the folder holds a file for, named by the row's number, with the first that exists
/// of .gpf2, .gpf, .bmp, .png, .jpg, .gif. Rows without a file are passed over silently; rows whose file is
/// refused are problems of the outcome, which counts the work files as written. Kept: saving a patch is
/// enabled even when nothing matched.
Outcome ReplaceFromFolder(Session& session, Ports& ports, const std::filesystem::path& folder,
                          std::uint8_t typeCode);

}  // namespace pictavo
